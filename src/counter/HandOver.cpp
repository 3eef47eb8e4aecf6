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

/// One attempt, which begins with a look for the line that an earlier one may have left.
class CashRecord::Attempt
{
public:
    Attempt(Station &station, const QString &words, QStringList &tried)
        : m_station(station), m_operation(station, words), m_before(tried)
    {
        tried << sqlDateTime(station.now());
    }

    void run(const QString &action, const std::function<void(Operation &)> &rest = {})
    {
        m_operation.run([&] {
            if (stands(action))
                return false;
            logWithin(m_operation, m_station, m_station.CurrentStaff, action);
            if (rest)
                rest(m_operation);
            return true;
        });
    }

private:
    bool stands(const QString &action)
    {
        if (m_before.isEmpty())
            return false;
        const QString look = sql(u"SELECT log_id FROM tbl_log WHERE log_counter=%1 AND log_do='%2' AND log_datetime IN "
                                 "('%3') LOCK IN SHARE MODE"_s,
                                 int(m_station.settings.ThisCounter), literal(action), m_before.join(u"', '"_s));
        return m_operation.query(look).size() > 0;
    }

    Station &m_station;
    Operation m_operation;
    const QStringList m_before;
};

void CashRecord::handOver(const QString &login, const QString &amount)
{
    Attempt(m_station, u"The hand-over"_s, m_tried)
        .run(sql(u"Handover at %1, will change user now"_s, plainNumber(leadingNumber(amount))),
             [&](Operation &operation) {
                 operation.execute(counterStaffStatement(m_station.settings.ThisCounter, login));
                 operation.execute(activityLogStatement(m_station, login, u"logging in"_s));
                 operation.execute(lastLoginStatement(m_station, login));
             });
    m_station.CurrentStaff = login;
}

void CashRecord::collect(const QString &amount)
{
    Attempt(m_station, u"The collection of cash"_s, m_tried)
        .run(u"Cash Collected "_s + plainNumber(leadingNumber(amount)));
}
