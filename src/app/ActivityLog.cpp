#include "app/ActivityLog.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "app/Operation.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

QString activityLogStatement(const Station &station, const QString &staffName, const QString &action)
{
    return sql(u"INSERT INTO tbl_log SET log_counter= %1, log_staffname='%2', log_datetime='%3', log_do='%4'"_s,
               int(station.settings.ThisCounter), staffName, sqlDateTime(station.now()), action);
}

void WriteActivityLog(Station &station, const QString &staffName, const QString &action)
{
    guarded(station.prompts, ErrorCode::LogFile, [&] {
        DbConnection connection(station.database);
        connection.execute(activityLogStatement(station, staffName, action));
    });
}

void logWithin(Operation &operation, const Station &station, const QString &staffName, const QString &action)
{
    operation.insertProof(activityLogStatement(station, literal(staffName), literal(action)), u"tbl_log"_s, u"log_id"_s,
                          sql(u"log_do='%1'"_s, literal(action)));
}
