#include "counter/SlotPrice.h"

#include "app/Formats.h"
#include "app/SqlText.h"
#include "app/Station.h"
#include "booking/Ground.h"
#include "booking/Rates.h"

using namespace Qt::StringLiterals;

namespace {

const QString noticeTitle = u"Information"_s;

// Marker rows may stand beside the booker's: they have neither rate type nor extra time.
QString noticedText(Station &station, const char *column, const SlotKey &slot)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(sql(u"SELECT %1 from tbl_booking where b_datetime=\"%2\" AND b_field=%3"_s,
                                       QString::fromLatin1(column), slot.dateTimeText(), slot.field));
    while (rows.next())
        if (const QString text = rows.text(column); !text.isEmpty() && text != u"0")
            return text;
    return {};
}

QString noticeRate(Station &station, const SlotKey &slot)
{
    const QString rateType = noticedText(station, "b_specialrate", slot);
    if (!rateType.isEmpty())
        station.prompts.inform(u"The customer got "_s + rateType + u" rate"_s, noticeTitle);
    return rateType;
}

int noticeExtraTime(Station &station, const SlotKey &slot)
{
    const int minutes = noticedText(station, "b_extratime", slot).toInt();
    if (minutes > 0)
        station.prompts.inform(u"The customer got extra time"_s, noticeTitle);
    return minutes;
}

} // namespace

SlotPrice priceOfSlot(Station &station, const SlotKey &slot)
{
    SlotPrice result;
    result.rateType = noticeRate(station, slot);
    result.price = CalcFieldRate(station.database, qint16(slot.field), slot.hourText.left(2).toShort(),
                                 rateDayName(slot.day), result.rateType);
    result.extraMinutes = noticeExtraTime(station, slot);
    const double extraHours = result.extraMinutes > 0 ? result.extraMinutes / 60.0 : 0;
    result.quantity = 1 + extraHours;
    result.total = roundedToCents(result.price + extraHours * result.price);
    return result;
}

QString reasonNotToCharge(const DayRow &row, const ChargeRefusals &texts)
{
    if (row.isFree())
        return texts.freeSlot;
    if (row.isPaid())
        return u"The slot already paid"_s;
    if (row.isExtraTime())
        return texts.extraTime;
    if (row.isPartiallyShared())
        return u"The slot is booked by one or more individual slots"_s;
    if (row.isSharedBooking())
        return texts.sharedBooking;
    return row.isGroundTaken ? groundTakenText() : QString();
}

QString slotLineText(const SlotKey &slot)
{
    return sql(u"Field Number %1 %2/%3/%4 %5"_s, slot.field + 1, slot.day.mid(8, 2), slot.day.mid(5, 2),
               slot.day.left(4), slot.hourText);
}

QString isSlotLine()
{
    return u"c_item REGEXP '^Field Number [0-9]+ [0-9]{2}/[0-9]{2}/[0-9]{4} [0-9]{2}:[0-9]{2}$'"_s;
}

double roundedToCents(double amount)
{
    return formatNumber(amount, u"#0.00"_s).toDouble();
}
