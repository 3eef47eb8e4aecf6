#include "app/ActivityLog.h"

#include "app/Errors.h"
#include "app/Formats.h"

using namespace Qt::StringLiterals;

void WriteActivityLog(Station &station, const QString &staffName, const QString &action)
{
    guarded(station.prompts, ErrorCode::LogFile, [&] {
        DbConnection connection(station.database);
        connection.execute(u"INSERT INTO tbl_log SET log_counter= "_s + QString::number(station.settings.ThisCounter) +
                           u", log_staffname='"_s + staffName + u"', log_datetime='"_s + sqlDateTime(station.now()) +
                           u"', log_do='"_s + action + u"'"_s);
    });
}
