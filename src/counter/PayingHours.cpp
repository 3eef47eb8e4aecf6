#include "counter/PayingHours.h"

using namespace Qt::StringLiterals;

namespace {

QString reasonNotToPay(const DayRow &row)
{
    return reasonNotToCharge(row, {u"You cannot pay empty slot"_s,
                                   u"The slot is an extra time of previous slot, use the previous slot to pay for it"_s,
                                   u"Please pay via master slots"_s});
}

} // namespace

void payHours(Station &station, const DaySelection &selection, const PaymentList &list,
              const std::function<void(const BookedHour &, const SlotPrice &)> &add)
{
    for (const int index : selection.selected) {
        const DayRow &row = selection.row(index);
        if (const QString reason = reasonNotToPay(row); !reason.isEmpty()) {
            station.prompts.refuse(reason);
            return;
        }
        const SlotKey slot = selection.slotOf(row);
        const SlotPrice price = priceOfSlot(station, slot);
        if (list.holds(slot)) {
            station.prompts.inform(u"Already in the payment list"_s, {}, MessageIcon::None);
            return;
        }
        add({slot, row.booker, price.rateType, price.extraMinutes}, price);
    }
}
