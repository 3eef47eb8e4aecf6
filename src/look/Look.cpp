#include "look/Look.h"

#include "look/PictureReader.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QFont>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QTextCharFormat>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal readableSize = 10.5; // points: a day at arm's length

// Fusion with controls that a finger hits, and our own signs in message boxes. A style sheet could do the heights, but
// would stand between the style and everything that is painted.
class Style : public QProxyStyle
{
public:
    Style() : QProxyStyle(u"Fusion"_s) {}

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override
    {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        switch (type) {
        case CT_PushButton:
            return size.expandedTo({0, isTouched(widget) ? touchHeight : controlHeight});
        case CT_LineEdit:
            return isInsideSpinBox(widget) ? size : size.expandedTo({0, controlHeight});
        case CT_ComboBox:
        case CT_SpinBox:
            return size.expandedTo({0, controlHeight});
        default:
            return size;
        }
    }

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, result);
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const override
    {
        switch (icon) {
        case SP_MessageBoxCritical:
            return sign(Look::alert, u'!');
        case SP_MessageBoxQuestion:
            return sign(Look::paid, u'?');
        case SP_MessageBoxInformation:
            return sign(Look::paid, u'i');
        case SP_ArrowLeft:
            return arrow({{22, 4}, {22, 28}, {8, 16}});
        case SP_ArrowRight:
            return arrow({{10, 4}, {10, 28}, {24, 16}});
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
        }
    }

private:
    static constexpr int controlHeight = 32;
    static constexpr int touchHeight = 44;

    static bool isTouched(const QWidget *widget)
    {
        while (widget && !widget->property("touch").toBool())
            widget = widget->parentWidget();
        return widget != nullptr;
    }

    static bool isInsideSpinBox(const QWidget *widget)
    {
        return widget && qobject_cast<const QAbstractSpinBox *>(widget->parentWidget());
    }

    // The calendars' arrows, on the ground of a selection. Qt's own are read from a picture file for each of many
    // sizes, and every opening of the main window would wait for that.
    static QIcon arrow(const QPolygonF &outline)
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QApplication::palette().highlightedText());
        painter.drawPolygon(outline);
        return QIcon(picture);
    }

    static QIcon sign(const Look::Tone &tone, QChar letter)
    {
        QPixmap disc(128, 128);
        disc.fill(Qt::transparent);
        QPainter painter(&disc);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(tone.background);
        painter.drawEllipse(disc.rect().adjusted(4, 4, -4, -4));
        QFont font = QApplication::font();
        font.setPixelSize(88);
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(tone.text);
        painter.drawText(disc.rect(), Qt::AlignCenter, letter);
        return QIcon(disc);
    }
};

// A drawing that is read when it is first shown. QIcon would read it when it is made, and most stand in menus and on
// pages that may never be opened.
class LateDrawing : public QIconEngine
{
public:
    explicit LateDrawing(QString file) : m_file(std::move(file)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        drawing().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return drawing().actualSize(size, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return drawing().pixmap(size, 1, mode, state);
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal /*scale*/) override
    {
        return pixmap(size, mode, state);
    }
    [[nodiscard]] QIconEngine *clone() const override { return new LateDrawing(*this); }

private:
    const QIcon &drawing()
    {
        if (m_drawing.isNull())
            m_drawing = QIcon(m_file);
        return m_drawing;
    }

    QString m_file;
    QIcon m_drawing;
};

QPalette palette()
{
    const QColor white(255, 255, 255);
    const QColor faint(98, 104, 107);
    QPalette colors(Look::paper);
    colors.setColor(QPalette::WindowText, Look::ink);
    colors.setColor(QPalette::Text, Look::ink);
    colors.setColor(QPalette::ButtonText, Look::ink);
    colors.setColor(QPalette::Base, white);
    colors.setColor(QPalette::AlternateBase, {251, 249, 244});
    colors.setColor(QPalette::Button, {238, 234, 223});
    colors.setColor(QPalette::PlaceholderText, faint);
    colors.setColor(QPalette::Highlight, Look::accent);
    colors.setColor(QPalette::HighlightedText, white);
    colors.setColor(QPalette::Link, Look::accent);
    colors.setColor(QPalette::ToolTipBase, Look::ink);
    colors.setColor(QPalette::ToolTipText, white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colors.setColor(QPalette::Disabled, role, faint);
    return colors;
}

} // namespace

// The drawings are in a library and left out of the program unless something asks for them. Qt's macro works outside
// namespaces only.
static void registerDrawings()
{
    Q_INIT_RESOURCE(tamsora);
}

void Look::apply(QApplication &application)
{
    registerDrawings();
    QApplication::setWindowIcon(QPixmap::fromImage(PictureReader(u":/tamsora.png"_s).read()));
    auto *style = new Style;
    style->setParent(&application);
    QApplication::setStyle(style);
    QApplication::setPalette(palette());
    QFont font = QApplication::font();
    if (font.pointSizeF() < readableSize) {
        font.setPointSizeF(readableSize);
        QApplication::setFont(font);
    }
}

void Look::paint(QWidget &widget, const Tone &tone)
{
    QPalette colours = widget.palette();
    colours.setColor(QPalette::Window, tone.background);
    colours.setColor(QPalette::WindowText, tone.text);
    widget.setPalette(colours);
    widget.setAutoFillBackground(true);
}

void Look::applyTo(QCalendarWidget &calendar)
{
    QTextCharFormat weekend;
    weekend.setForeground(alert.background);
    for (const auto day : {Qt::Saturday, Qt::Sunday})
        calendar.setWeekdayTextFormat(day, weekend);
}

QIcon Look::icon(const QString &name)
{
    return QIcon(new LateDrawing(u":/icons/"_s + name + u".svg"_s));
}
