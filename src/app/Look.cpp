#include "app/Look.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal readableSize = 10.5; // points: a day at arm's length

// Only what Fusion and the palette cannot say: heights that a finger hits.
constexpr auto heights = R"(
QPushButton, QLineEdit, QComboBox, QDateEdit, QSpinBox { min-height: 24px; }
QPushButton { padding: 3px 16px; }
*[touch="true"] QPushButton { min-height: 36px; }
)";

QPalette palette()
{
    const QColor white(255, 255, 255);
    const QColor faint(120, 126, 128);
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

void Look::apply(QApplication &application)
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(palette());
    QFont font = QApplication::font();
    if (font.pointSizeF() < readableSize) {
        font.setPointSizeF(readableSize);
        QApplication::setFont(font);
    }
    application.setStyleSheet(QLatin1StringView(heights));
}

QIcon Look::icon(const QString &name)
{
    return QIcon(u":/icons/"_s + name + u".svg"_s);
}
