#include "counter/Settlement.h"

#include "app/ActivityLog.h"
#include "app/Conversions.h"
#include "app/DayRow.h"
#include "app/Errors.h"
#include "app/Formats.h"
#include "app/Operation.h"
#include "app/RateType.h"
#include "app/SqlText.h"
#include "booking/Ground.h"
#include "counter/CounterNumbers.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

/// A slot's booking as the tables hold it.
struct StoredBooking
{
    QString booker;
    QString rateType;
    int extraMinutes = 0;
    bool isPaid = false;
};

// Of a slot's rows the booker's counts; extra time and payment of any row.
StoredBooking bookingOf(DbRows rows)
{
    StoredBooking booking;
    while (rows.next()) {
        const QString booker = rows.text("b_bookername");
        if (takesPlaceOf(booking.booker, booker)) {
            booking.booker = booker;
            booking.rateType = rows.text("b_specialrate");
        }
        booking.extraMinutes = std::max(booking.extraMinutes, rows.number("b_extratime"));
        booking.isPaid = booking.isPaid || rows.amount("b_paid") > 0;
    }
    return booking;
}

QString slotCondition(const SlotKey &slot)
{
    return sql(u" WHERE b_datetime='%1' AND b_field=%2"_s, slot.dateTimeText(), slot.field);
}

/// What stands against paying the hour as it was added; empty when nothing does.
QString changeOf(const Station &station, const BookedHour &hour, const StoredBooking &now)
{
    const SlotKey &slot = hour.slot;
    QString what;
    if (now.booker.isEmpty())
        what = u"is no longer booked"_s;
    else if (now.isPaid)
        what = u"was paid at another counter"_s;
    else if (now.booker != hour.booker)
        what = u"is booked for "_s + now.booker + u" by now"_s;
    else if (now.rateType != hour.rateType)
        what = u"has the "_s + RateType::inWords(now.rateType) + u" by now"_s;
    else if (now.extraMinutes != hour.extraMinutes)
        what = sql(u"has other extra time by now: %1 minutes"_s, now.extraMinutes);
    else
        return {};
    const QString day = slot.day == sqlDate(station.now().date()) ? QString() : u" ("_s + slot.day + u')';
    return station.settings.fieldName(slot.field) + u' ' + slot.hourText + u' ' + what + day;
}

QStringList locksOf(const Station &station, const PaymentList &list)
{
    QStringList locks{counterNumbersLock(station.settings.ThisCounter)};
    for (const PaymentLine &line : list.lines())
        if (line.hour)
            locks += groundLocks(station, line.hour->slot);
    return locks;
}

// The text itself, whatever stands for any text in a LIKE.
QString exactPattern(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u'%', u"\\%"_s).replace(u'_', u"\\_"_s);
    return literal(text);
}

/// The statements of one sale.
class Sale
{
public:
    Sale(Station &station, const PaymentList &list, const std::function<void(int)> &tellNumberBefore)
        : m_station(station),
          m_list(list),
          m_tellNumberBefore(tellNumberBefore),
          m_operation(station, u"The sale"_s, locksOf(station, list))
    {
    }

    Settlement settle()
    {
        m_operation.run([this] {
            m_result = {};
            m_proven = false;
            look();
            if (m_result.refused.empty())
                write();
            return m_result.transaction.has_value();
        });
        return std::move(m_result);
    }

private:
    [[nodiscard]] int counter() const { return m_station.settings.ThisCounter; }

    /// Holds every booked hour until the sale is over, in the same order at every counter, and says which has changed.
    void look()
    {
        std::map<std::pair<QString, int>, std::size_t> hours;
        for (std::size_t i = 0; i < m_list.lines().size(); ++i)
            if (const auto &hour = m_list.lines()[i].hour)
                hours.emplace(std::pair(hour->slot.dateTimeText(), hour->slot.field), i);
        for (const auto &[slot, line] : hours) {
            const BookedHour &hour = *m_list.lines()[line].hour;
            const QString why = changeOf(m_station, hour, readBooking(hour.slot, u" FOR UPDATE"_s));
            if (!why.isEmpty())
                m_result.refused.push_back({line, why});
        }
    }

    void write()
    {
        const int before = highestTransactionNumber(m_operation, counter());
        const qint16 transaction = nextNumber(before);
        if (m_tellNumberBefore)
            m_tellNumberBefore(before);
        for (const PaymentLine &line : m_list.lines())
            writeLine(line, transaction);
        m_operation.setRecordedAs(u"as transaction "_s + QString::number(transaction));
        m_result.transaction = transaction;
    }

    void writeLine(const PaymentLine &line, qint16 transaction)
    {
        const QString moment = sqlDateTime(m_station.now());
        const QString total = plainNumber(toDouble(line.price) * toDouble(line.quantity));
        QString rateType;
        if (line.hour) {
            const StoredBooking booking = readBooking(line.hour->slot);
            rateType = booking.rateType;
            m_operation.execute(u"UPDATE tbl_booking SET b_paid="_s + total + slotCondition(line.hour->slot));
            countHour(rateType, booking.booker);
        }
        insert(sql(u"INSERT INTO %1 SET c_datetime='%2', c_item='%3', c_itemprice='%4', c_itemquantity='%5', "
                   "c_itemtotal='%6', c_transaction='%7', c_special='%8', c_receipt='', c_staffid='%9'"_s,
                   table(), moment, literal(line.text), line.price, line.quantity, total, int(transaction), rateType,
                   quoted(m_station.CurrentStaff)),
               sql(u"c_transaction=%1 AND c_datetime='%2'"_s, int(transaction), moment));
        m_operation.execute(sql(u"UPDATE tbl_item SET i_currentstock=i_currentstock-%1 WHERE i_name LIKE '%2'"_s,
                                line.quantity, exactPattern(line.text)));
    }

    /// The first line proves that the sale stands.
    void insert(const QString &statement, const QString &sameRow)
    {
        if (m_proven)
            m_operation.execute(statement);
        else
            m_operation.insertProof(statement, table(), u"c_id"_s, sameRow);
        m_proven = true;
    }

    StoredBooking readBooking(const SlotKey &slot, const QString &lock = {})
    {
        return bookingOf(m_operation.query(u"SELECT * from  tbl_booking"_s + slotCondition(slot) + lock));
    }

    void countHour(const QString &rateType, const QString &booker)
    {
        if (rateType == RateType::member)
            m_operation.execute(sql(u"UPDATE tbl_member SET m_hour=m_hour+1 WHERE m_name='%1'"_s, literal(booker)));
        else if (rateType == RateType::student)
            m_operation.execute(sql(u"UPDATE tbl_student SET st_hour=st_hour+1 WHERE st_name='%1'"_s, literal(booker)));
        for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
            if (rateType == RateType::specialGroup(group))
                countGroupHour(group, booker);
    }

    // A group may be gone while its rate stands in old bookings: that keeps nobody from paying.
    void countGroupHour(int group, const QString &booker)
    {
        constexpr unsigned noSuchTable = 1146;
        try {
            m_operation.execute(
                sql(u"UPDATE tbl_specialgroup%1 SET m_hour=m_hour+1 WHERE m_name='%2'"_s, group, literal(booker)));
        } catch (const DbError &error) {
            if (error.number() != noSuchTable)
                throw;
        }
    }

    [[nodiscard]] QString table() const { return counterTable(u"tbl_counter"_s, counter()); }

    Station &m_station;
    const PaymentList &m_list;
    const std::function<void(int)> &m_tellNumberBefore;
    Operation m_operation;
    Settlement m_result;
    bool m_proven = false;
};

} // namespace

Settlement settle(Station &station, const PaymentList &list, const std::function<void(int)> &tellNumberBefore)
{
    if (list.isEmpty())
        throw NotDone(u"There is nothing to pay."_s);
    Settlement settlement = Sale(station, list, tellNumberBefore).settle();
    if (settlement.transaction) {
        WriteActivityLog(station, station.CurrentStaff, u"Sales made, drawer open"_s);
        warnOfHighNumber(station, u"transaction"_s, *settlement.transaction);
    }
    return settlement;
}

std::optional<qint16> recordedSale(Station &station, const PaymentList &list, int after, const QDateTime &since)
{
    DbConnection connection(station.database, u"Looking whether the sale was recorded …"_s);
    // With a lock: where the old connection's transaction is still open on the server, the look waits for its end.
    DbRows rows =
        connection.query(sql(u"SELECT c_transaction, c_item, c_itemquantity, c_itemprice FROM %1 WHERE "
                             "c_transaction>%2 AND c_datetime>='%3' ORDER BY c_id LOCK IN SHARE MODE"_s,
                             counterTable(u"tbl_counter"_s, station.settings.ThisCounter), after, sqlDateTime(since)));
    std::map<int, QStringList> sales;
    const auto lineText = [](const QString &text, double quantity, double price) {
        return sql(u"%1|%2|%3"_s, text, plainNumber(quantity), plainNumber(price));
    };
    while (rows.next())
        sales[rows.number("c_transaction")]
            << lineText(rows.text("c_item"), rows.amount("c_itemquantity"), rows.amount("c_itemprice"));
    QStringList wanted;
    for (const PaymentLine &line : list.lines())
        wanted << lineText(line.text, toDouble(line.quantity), toDouble(line.price));
    for (const auto &[transaction, lines] : sales)
        if (lines == wanted)
            return static_cast<qint16>(transaction);
    return std::nullopt;
}
