#include "reportserver/OccupancyPicture.h"

#include "reportserver/Html.h"

#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int left = 52; // the hours
constexpr int top = 86;  // the names of the fields, upright
constexpr int cellWidth = 36;
constexpr int cellHeight = 20;

struct Cell
{
    int booked = 0;
    int paid = 0;
    bool isGroundTaken = false;
    QString words = {};
};

class Picture
{
public:
    Picture(const BookingFigures &figures, const ReportPeriod &period, const ReportSettings &settings)
        : m_period(period), m_settings(settings), m_hours(hoursOfDay(settings.hours()))
    {
        for (const ReportedHour &mark : figures.marks)
            m_cells[{mark.field, mark.hour}].isGroundTaken = true;
        for (const ReportedHour &hour : figures.hours) {
            Cell &cell = m_cells[{hour.field, hour.hour}];
            ++cell.booked;
            cell.paid += hour.isPaid() ? 1 : 0;
            cell.words = hour.booker;
        }
    }

    [[nodiscard]] QString svg() const
    {
        const int width = left + m_settings.fields() * cellWidth + 4;
        const int height = top + int(m_hours.size()) * cellHeight + 4;
        QString html = u"<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" viewBox=\"0 0 %1 %2\" "
                       "font-size=\"11\" aria-label=\"Occupancy by hour and field\">"_s.arg(width)
                           .arg(height);
        for (int field = 0; field < m_settings.fields(); ++field)
            html += nameOf(field);
        for (std::size_t row = 0; row < m_hours.size(); ++row) {
            const int hour = m_hours[row];
            html += u"<text x=\"%1\" y=\"%2\" text-anchor=\"end\">%3</text>"_s.arg(left - 6)
                        .arg(baseline(int(row)))
                        .arg(hourRangeText(hour).left(5));
            for (int field = 0; field < m_settings.fields(); ++field)
                html += cellAt(field, int(row), hour);
        }
        return html + u"</svg>"_s;
    }

private:
    [[nodiscard]] static int baseline(int row) { return top + row * cellHeight + 14; }

    [[nodiscard]] QString nameOf(int field) const
    {
        constexpr int mostLetters = 14;
        QString name = m_settings.fieldName(field);
        if (name.size() > mostLetters)
            name = name.left(mostLetters - 1) + u'…';
        const int x = left + field * cellWidth + cellWidth / 2 + 4;
        return u"<text transform=\"translate(%1 %2) rotate(-90)\">%3</text>"_s.arg(x).arg(top - 6).arg(
            Html::escaped(name));
    }

    [[nodiscard]] QString cellAt(int field, int row, int hour) const
    {
        const auto found = m_cells.find({field, hour});
        const Cell cell = found == m_cells.end() ? Cell() : found->second;
        const auto [tone, letters, words] = m_period.kind == ReportPeriod::Kind::Day ? stateOf(cell) : shareOf(cell);
        const int x = left + field * cellWidth;
        const QString title = m_settings.fieldName(field) + u", "_s + hourRangeText(hour) + u": "_s + words;
        QString html = u"<g><title>"_s + Html::escaped(title) +
                       u"</title><rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" %5/>"_s.arg(x + 1)
                           .arg(top + row * cellHeight + 1)
                           .arg(cellWidth - 2)
                           .arg(cellHeight - 2)
                           .arg(tone);
        if (!letters.isEmpty())
            html += u"<text x=\"%1\" y=\"%2\" text-anchor=\"middle\"%3>%4</text>"_s.arg(x + cellWidth / 2)
                        .arg(baseline(row))
                        .arg(tone.contains(u"paid"_s) ? u" class=\"onpaid\""_s : QString(), letters);
        return html + u"</g>"_s;
    }

    struct Drawn
    {
        QString tone;
        QString letters;
        QString words;
    };

    [[nodiscard]] static Drawn stateOf(const Cell &cell)
    {
        if (cell.paid > 0)
            return {u"class=\"paid\""_s, u"P"_s, cell.words + u", paid"_s};
        if (cell.booked > 0)
            return {u"class=\"booked\""_s, u"U"_s, cell.words + u", not paid"_s};
        if (cell.isGroundTaken)
            return {u"class=\"ground\""_s, u"S"_s, u"ground shared with a booking of another field"_s};
        return {u"class=\"free\""_s, {}, u"free"_s};
    }

    /// The more is booked the stronger the colour; it stays light enough for dark figures.
    [[nodiscard]] Drawn shareOf(const Cell &cell) const
    {
        if (cell.booked == 0)
            return {u"class=\"free\""_s, {}, u"never booked"_s};
        const double share = double(cell.booked) / m_period.days();
        const int percent = int(std::lround(100 * share));
        return {u"class=\"booked\" fill-opacity=\"%1\""_s.arg(0.2 + 0.8 * std::min(share, 1.0), 0, 'f', 2),
                QString::number(percent),
                u"booked on %1 of %2 days, %3 paid"_s.arg(cell.booked).arg(m_period.days()).arg(cell.paid)};
    }

    const ReportPeriod &m_period;
    const ReportSettings &m_settings;
    std::vector<int> m_hours;
    std::map<std::pair<int, int>, Cell> m_cells; ///< by field and hour
};

} // namespace

QString occupancyPicture(const BookingFigures &figures, const ReportPeriod &period, const ReportSettings &settings)
{
    const QString caption =
        period.kind == ReportPeriod::Kind::Day
            ? u"P: booked and paid. U: booked, not paid. S: the ground is taken by a booking of another field."_s
            : u"How many of the %1 days are booked, in percent. An empty cell was never booked."_s.arg(period.days());
    return u"<figure>"_s + Picture(figures, period, settings).svg() + u"<figcaption>"_s + Html::escaped(caption) +
           u"</figcaption></figure>\n"_s;
}
