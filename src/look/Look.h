#pragma once

#include <QColor>
#include <QIcon>

class QApplication;
class QCalendarWidget;
class QWidget;

/// What every window shares to the eye.
namespace Look {

/// A state's paper and ink: readable (contrast 4.5 and more) and told apart by the colour-blind. The state is always
/// written in words as well.
struct Tone
{
    QColor background;
    QColor text;
};

inline constexpr QColor paper{251, 248, 241};
inline constexpr QColor ink{34, 48, 58};
inline constexpr QColor accent{15, 106, 98};

inline constexpr Tone free{{255, 255, 255}, ink};
inline constexpr Tone booked{{120, 198, 205}, {10, 52, 56}};
inline constexpr Tone paid{{23, 102, 95}, {255, 255, 255}};
inline constexpr Tone shared{{242, 222, 150}, {64, 47, 0}};
inline constexpr Tone extraTime{{190, 166, 232}, {41, 26, 88}};
inline constexpr Tone past{{222, 219, 211}, {82, 88, 92}};
inline constexpr Tone presentHour{{12, 16, 20}, {0, 192, 0}};
inline constexpr Tone hourBefore{{12, 16, 20}, {255, 0, 0}};
inline constexpr Tone enough{{26, 116, 58}, {255, 255, 255}};
inline constexpr Tone alert{{176, 48, 32}, {255, 255, 255}};

/// Sets style, palette and font; to be called once, before the first window. Buttons and boxes are at least 32 pixels
/// high; buttons in a widget whose dynamic property "touch" is true, 44.
void apply(QApplication &application);

/// Gives a widget this paper and ink.
void paint(QWidget &widget, const Tone &tone);

/// Writes a calendar's weekends in a red that can be read on every ground of a calendar.
void applyTo(QCalendarWidget &calendar);

/// One of our own drawings, by its bare name.
QIcon icon(const QString &name);

} // namespace Look
