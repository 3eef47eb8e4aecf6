#pragma once

#include <QLabel>
#include <QPainter>

/// A line of plain text that ends in "…" where its room ends, and so never widens its window. Its tip says all of it.
class ElidedLabel : public QLabel
{
public:
    ElidedLabel() { setTextFormat(Qt::PlainText); }

    void showText(const QString &text)
    {
        setText(text);
        setToolTip(QStringLiteral("<qt>") + text.toHtmlEscaped());
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawText(rect(), int(alignment()) | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    }
};
