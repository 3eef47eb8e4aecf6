#include "counter/HandOver.h"

#include "app/ActivityLog.h"
#include "app/Conversions.h"
#include "app/CounterState.h"
#include "app/Operation.h"
#include "app/SqlText.h"
#include "app/Staff.h"

using namespace Qt::StringLiterals;

void requestHandOver(Station &station, const QString &login)
{
    WriteActivityLog(station, station.CurrentStaff, sql(u"HandOver requested by %1, drawer open"_s, login));
}

void handOver(Station &station, const QString &login, const QString &amount)
{
    Operation operation(station, u"The hand-over"_s);
    operation.run([&] {
        operation.execute(
            activityLogStatement(station, station.CurrentStaff,
                                 sql(u"Handover at %1, will change user now"_s, plainNumber(leadingNumber(amount)))));
        operation.execute(counterStaffStatement(station.settings.ThisCounter, login));
        logWithin(operation, station, login, u"logging in"_s);
        operation.execute(lastLoginStatement(station, login));
        return true;
    });
    station.CurrentStaff = login;
}

void collectCash(Station &station, const QString &amount)
{
    Operation operation(station, u"The collection of cash"_s);
    operation.run([&] {
        logWithin(operation, station, station.CurrentStaff, u"Cash Collected "_s + plainNumber(leadingNumber(amount)));
        return true;
    });
}
