#include "support/TestStation.h"

#include "app/Formats.h"

#include <QRegularExpression>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

constexpr WorkingHours hours{8, 2};

void drawRow(DayRow &row, const QString &text)
{
    static const QRegularExpression form(u"^(?<booker>.*?)(?: tel (?<tel>\\S+))?(?: (?<paid>paid \\S+))?$"_s);
    const auto match = form.match(text);
    row.booker = match.captured(u"booker");
    row.telephone = match.captured(u"tel");
    row.paid = match.captured(u"paid").replace(u"paid"_s, u"Paid"_s);
    if (row.booker.startsWith(u'+')) {
        const auto fraction = char16_t(187 + row.booker.mid(1).toInt() / 15);
        row.booker = QString(BookerMark::extraTime) + u" + "_s + QChar(fraction) + u" hour "_s;
    }
}

} // namespace

AppSettings testSettings(const QString &connectionString, int counter, const QStringList &pairs)
{
    AppSettings settings;
    settings.ConnectionString = connectionString;
    settings.firstHour = qint16(hours.first);
    settings.lastHour = qint16(hours.last);
    settings.MaxFieldIndex = 8;
    for (int field = 0; field <= settings.MaxFieldIndex; ++field)
        settings.FieldNames[std::size_t(field)] = u"Field "_s + QString::number(field + 1);
    settings.FieldDisplayNames = settings.FieldNames;
    std::copy(pairs.cbegin(), pairs.cend(), settings.SharedFields.begin());
    settings.ThisCounter = qint16(counter);
    settings.CounterCount = 2;
    return settings;
}

TestStation::TestStation(const PrivateServer &server, const QStringList &script, int counter)
    : ScriptedPerson{ScriptedPrompts(script)},
      Station(testSettings(server.connectionString(), counter), person, [this] { return m_now; })
{
    setNow(u"2026-11-14 14:59:59"_s);
}

void TestStation::setNow(const QString &moment)
{
    m_now = QDateTime::fromString(moment, u"yyyy-MM-dd HH:mm:ss"_s);
    if (!m_now.isValid())
        throw std::invalid_argument("No moment: " + moment.toStdString());
    readClock();
}

DaySelection drawnDay(const QString &day, int field, const QStringList &lines)
{
    DaySelection selection{day, field, {}, {}, -1};
    for (const int hour : hoursOfDay(hours))
        selection.rows.push_back({hour, hourRangeText(hour), twelveHourText(hour)});
    for (const QString &line : lines) {
        const QString drawn = line.startsWith(u'>') ? line.mid(1).trimmed() : line;
        const auto row = std::find_if(selection.rows.begin(), selection.rows.end(),
                                      [&](const DayRow &r) { return r.hourText() == drawn.left(5); });
        if (row == selection.rows.end())
            throw std::invalid_argument("No hour of the day: " + line.toStdString());
        drawRow(*row, drawn.mid(6));
        if (line.startsWith(u'>'))
            selection.selected.push_back(int(row - selection.rows.begin()));
    }
    std::sort(selection.selected.begin(), selection.selected.end());
    if (!selection.selected.empty())
        selection.current = selection.selected.front();
    return selection;
}
