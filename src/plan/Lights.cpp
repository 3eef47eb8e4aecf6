#include "plan/Lights.h"

#include "app/Formats.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

bool commitLights(Station &station, int field, const LightRows &rows)
{
    const auto verified = station.prompts.verifyStaff(u"Commit the lights of "_s + station.settings.fieldName(field));
    if (!verified || !station.prompts.confirm(u"Confirm Light Status?"_s, u"Important"_s))
        return false;
    QString staff = verified->staffName;
    const auto state = [&rows](std::size_t row) { return rows.at(row) ? u"on"_s : u"off"_s; };
    DbConnection(station.database)
        .execute(u"INSERT INTO tbl_light SET l_field="_s + QString::number(field) + u", l_staff='"_s +
                 EscapeQuotes(staff) + u"', l_datetime='"_s + sqlDateTime(station.now()) + u"', l_row0='"_s + state(0) +
                 u"', l_row1='"_s + state(1) + u"',l_row2='"_s + state(2) + u"', l_row3='"_s + state(3) +
                 u"', l_row4= '"_s + state(4) + u"'"_s);
    return true;
}

std::vector<LightCommit> lastLightCommits(Database &database, int field, int limit)
{
    DbRows rows = DbConnection(database).query(
        u"SELECT l_datetime, l_staff, l_row0, l_row1, l_row2, l_row3, l_row4 FROM tbl_light WHERE l_field="_s +
        QString::number(field) + u" ORDER BY l_datetime DESC, l_id DESC LIMIT "_s + QString::number(limit));
    std::vector<LightCommit> commits;
    while (rows.next()) {
        LightCommit &commit = commits.emplace_back(LightCommit{rows.text("l_datetime"), rows.text("l_staff")});
        for (unsigned row = 0; row < commit.rows.size(); ++row)
            commit.rows.at(row) = rows.text(2 + row) == u"on";
    }
    return commits;
}
