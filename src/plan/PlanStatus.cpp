#include "plan/PlanStatus.h"

#include "app/DayRow.h"
#include "plan/Lights.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

void readPresentHour(DbConnection &connection, const QString &slot, std::vector<FieldStatus> &fields)
{
    DbRows rows = connection.query(u"SELECT b_field, b_bookername from tbl_booking where b_datetime=\""_s + slot +
                                   u"\" ORDER BY b_field ASC;"_s);
    while (rows.next()) {
        const auto field = std::size_t(rows.number("b_field"));
        const QString name = rows.text("b_bookername");
        if (field >= fields.size() || !takesPlaceOf(fields[field].booker, name))
            continue;
        fields[field].booker = name;
        fields[field].state = isMarkerText(name) ? FieldState::Shared : FieldState::Booked;
    }
}

// One look into the index for each field, however long the log has grown.
void readLights(DbConnection &connection, std::vector<FieldStatus> &fields)
{
    QStringList newest;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        newest += u"(SELECT l_field, (l_row0='on')+(l_row1='on')+(l_row2='on')+(l_row3='on')+(l_row4='on') AS lit"_s +
                  u" FROM tbl_light WHERE l_field="_s + QString::number(field) +
                  u" ORDER BY l_datetime DESC, l_id DESC LIMIT 1)"_s;
    }
    DbRows rows = connection.query(newest.join(u" UNION ALL "_s));
    while (rows.next())
        fields.at(std::size_t(rows.number("l_field"))).litRows = rows.number("lit");
}

} // namespace

QString FieldStatus::stateText() const
{
    switch (state) {
    case FieldState::Free:
        return u"Free"_s;
    case FieldState::Booked:
        return u"Booked"_s;
    case FieldState::Shared:
        return u"Shared"_s;
    case FieldState::Closed:
        break;
    }
    return u"Closed"_s;
}

QString FieldStatus::lightText() const
{
    if (litRows == lightsUnknown)
        return {};
    return litRows == 0 ? u"Lights off"_s
                        : u"Lights "_s + QString::number(litRows) + u'/' + QString::number(LightRows{}.size());
}

std::vector<FieldStatus> readPlanStatus(Database &database, const QDateTime &now, WorkingHours hours, int maxField)
{
    std::vector<FieldStatus> fields(std::size_t(qMax(0, maxField + 1)));
    if (fields.empty())
        return fields;
    DbConnection connection(database);
    if (rowOfClockHour(hours, now.time().hour()) >= 0) {
        readPresentHour(connection, storedHour(now, hours).dateTimeText(), fields);
    } else {
        for (FieldStatus &field : fields)
            field.state = FieldState::Closed;
    }
    readLights(connection, fields);
    return fields;
}
