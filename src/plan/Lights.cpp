#include "plan/Lights.h"

#include "app/Formats.h"
#include "app/Operation.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

bool commitLights(Station &station, int field, const LightRows &rows)
{
    const auto verified = station.prompts.verifyStaff(u"Commit the lights of "_s + station.settings.fieldName(field));
    if (!verified || !station.prompts.confirm(u"Confirm Light Status?"_s, u"Important"_s))
        return false;
    const QString staff = quoted(verified->staffName);
    const QString now = sqlDateTime(station.now());
    const auto state = [&rows](std::size_t row) { return rows.at(row) ? u"on"_s : u"off"_s; };
    Operation operation(station, u"The lights of "_s + station.settings.fieldName(field));
    operation.run([&] {
        operation.insertProof(sql(u"INSERT INTO tbl_light SET l_field=%1, l_staff='%2', l_datetime='%3', l_row0='%4', "
                                  "l_row1='%5',l_row2='%6', l_row3='%7', l_row4= '%8'"_s,
                                  field, staff, now, state(0), state(1), state(2), state(3), state(4)),
                              u"tbl_light"_s, u"l_id"_s,
                              sql(u"l_field=%1 AND l_staff='%2' AND l_datetime='%3'"_s, field, staff, now));
        return true;
    });
    return true;
}

std::vector<LightCommit> lastLightCommits(Database &database, int field, int limit)
{
    DbRows rows = DbConnection(database).query(
        sql(u"SELECT l_datetime, l_staff, l_row0, l_row1, l_row2, l_row3, l_row4 FROM tbl_light WHERE l_field=%1 ORDER "
            "BY l_datetime DESC, l_id DESC LIMIT %2"_s,
            field, limit));
    std::vector<LightCommit> commits;
    while (rows.next()) {
        LightCommit &commit = commits.emplace_back(LightCommit{rows.text("l_datetime"), rows.text("l_staff")});
        for (unsigned row = 0; row < commit.rows.size(); ++row)
            commit.rows.at(row) = rows.text(2 + row) == u"on";
    }
    return commits;
}
