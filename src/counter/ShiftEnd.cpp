#include "counter/ShiftEnd.h"

#include "app/ActivityLog.h"
#include "app/Conversions.h"
#include "app/CounterState.h"
#include "app/Errors.h"
#include "app/Operation.h"
#include "app/SqlText.h"
#include "app/Station.h"
#include "counter/CounterNumbers.h"

using namespace Qt::StringLiterals;

QString salesOf(const QString &moneyInDrawer, const QString &cashFloat)
{
    if (moneyInDrawer.isEmpty() || cashFloat.isEmpty())
        return {};
    return plainNumber(leadingNumber(moneyInDrawer) - leadingNumber(cashFloat));
}

/// One attempt to record.
class ShiftEnd::Recording
{
public:
    Recording(Station &station, const QString &shiftName)
        : m_station(station),
          m_counter(station.settings.ThisCounter),
          m_shiftTable(counterTable(u"tbl_shift"_s, m_counter)),
          m_counterTable(counterTable(u"tbl_counter"_s, m_counter)),
          m_operation(station, sql(u"The end of the %1 shift"_s, shiftName), {counterNumbersLock(m_counter)})
    {
        m_shift.name = shiftName;
        m_shift.staff = station.CurrentStaff;
        m_shift.ended = sqlDateTime(station.now());
    }

    /// False when `isOver`, which is given the latest row, says so.
    bool run(const CountedMoney &money, const std::function<bool(const DbRows *)> &isOver)
    {
        m_shift.sales = leadingNumber(money.sales);
        m_shift.money = leadingNumber(money.moneyInDrawer);
        m_shift.cashFloat = leadingNumber(money.cashFloat);
        return m_operation.run([&] {
            m_operation.execute(activityLogStatement(m_station, m_shift.staff,
                                                     sql(u"%1 %2 Shift Ended "_s, m_shift.staff, m_shift.name)));
            m_operation.execute(counterShiftStatement(m_counter, 1));
            DbRows last = latestShift();
            const bool isFirst = !last.next();
            if (isOver(isFirst ? nullptr : &last))
                return false;
            const QString start = isFirst ? firstSale() : last.text("sh_datetime");
            m_shift.firstTransaction = firstSaleSince(start);
            DbRows previous = latestShift();
            m_shift.lastEnded = previous.next() ? previous.text("sh_datetime") : QString();
            m_shift.stockLog = stockLogOf(m_operation.query(u"SELECT * FROM tbl_item"_s));
            insert();
            return true;
        });
    }

    [[nodiscard]] const EndedShift &shift() const { return m_shift; }

private:
    DbRows latestShift()
    {
        return m_operation.query(sql(u"SELECT * FROM %1 ORDER BY sh_datetime DESC LIMIT 1"_s, m_shiftTable));
    }

    QString firstSale()
    {
        DbRows rows =
            m_operation.query(sql(u"SELECT c_datetime FROM %1 ORDER BY c_datetime ASC LIMIT 1"_s, m_counterTable));
        const QString first = rows.next() ? rows.text("c_datetime") : QString();
        return first.isEmpty() ? m_shift.ended : first;
    }

    QString firstSaleSince(const QString &start)
    {
        DbRows rows =
            m_operation.query(sql(u"SELECT c_datetime FROM %1 WHERE c_datetime >= '%2' AND c_datetime <= '%3' "
                                  "ORDER BY c_datetime ASC LIMIT 1"_s,
                                  m_counterTable, start, m_shift.ended));
        return rows.next() ? rows.text("c_datetime") : m_shift.ended;
    }

    void insert()
    {
        const QString row =
            sql(u"INSERT INTO %1 SET sh_sales=%2, sh_totalmoney=%3, sh_datetime='%4', sh_float=%5, "
                "sh_first_transaction='%6', sh_lastdatetime='%7', sh_shift='%8', sh_stocklog='%9', sh_staff='%10' "_s,
                m_shiftTable, plainNumber(m_shift.sales), plainNumber(m_shift.money), m_shift.ended,
                plainNumber(m_shift.cashFloat), m_shift.firstTransaction, m_shift.lastEnded, m_shift.name,
                literal(m_shift.stockLog), m_shift.staff);
        m_operation.insertProof(row, m_shiftTable, u"sh_id"_s, sql(u"sh_datetime='%1'"_s, m_shift.ended));
    }

    Station &m_station;
    int m_counter;
    QString m_shiftTable;
    QString m_counterTable;
    Operation m_operation;
    EndedShift m_shift;
};

ShiftEnd::ShiftEnd(Station &station) : m_station(station), m_shiftName(station.shiftName) {}

void ShiftEnd::open()
{
    m_before = lastShift(m_station);
    m_isOpen = true;
}

const EndedShift &ShiftEnd::record(const CountedMoney &money)
{
    if (m_recorded)
        return *m_recorded;
    Recording recording(m_station, m_shiftName);
    if (!m_isOpen && m_tried.isEmpty())
        open();
    const QStringList tried = m_tried;
    m_tried << recording.shift().ended;
    const bool isNew = recording.run(money, [&](const DbRows *last) { return last && isOver(*last, tried); });
    m_recorded = isNew ? recording.shift() : lastShift(m_station);
    return *m_recorded;
}

bool ShiftEnd::isOver(const DbRows &last, const QStringList &tried) const
{
    if (m_isOpen && m_before && last.number("sh_id") == m_before->id)
        return false;
    const QString ended = last.text("sh_datetime");
    if (tried.contains(ended) && last.text("sh_staff") == m_station.CurrentStaff &&
        last.text("sh_shift") == m_shiftName)
        return true;
    // Of rows with the same moment any may be the latest.
    if (m_isOpen && !(m_before && m_before->ended == ended))
        throw NotDone(sql(u"This shift was ended already: %1 shift, by %2 at %3. Nothing was recorded now."_s,
                          last.text("sh_shift"), last.text("sh_staff"), ended));
    return false;
}
