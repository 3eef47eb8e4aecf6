#include "schedule/ClipboardLine.h"

#include "app/RateType.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int widestName = 150; // a longer one leaves room for the rate and where it is from; the tip says all of it

QString originOf(const BookingClipboard &clipboard, const AppSettings &settings)
{
    if (clipboard.source() == ClipboardSource::WaitingList)
        return u"from the waiting list of "_s + settings.fieldName(clipboard.cut.field) + u", "_s +
               clipboard.cut.dateTimeText.left(16);
    const SlotKey &slot = clipboard.copied.value();
    return u"copied from "_s + settings.fieldName(slot.field) + u", "_s + slot.day + u' ' + slot.hourText;
}

} // namespace

ClipboardLine::ClipboardLine()
{
    setObjectName(u"lbl_Clipboard"_s);
}

void ClipboardLine::showClipboard(const BookingClipboard &clipboard, const AppSettings &settings, const QString &kept)
{
    if (!kept.isEmpty()) {
        showText(u"For the next booking: "_s + kept);
        return;
    }
    if (clipboard.source() == ClipboardSource::Nothing) {
        showText(u"Nothing to paste"_s);
        return;
    }
    const bool waiting = clipboard.source() == ClipboardSource::WaitingList;
    const Booker &booker = waiting ? clipboard.cut.booker : clipboard.copiedBooker;
    const auto describe = [&](const QString &name) {
        return u"To paste: "_s + name + u" · "_s + RateType::inWords(booker.rateType) + u" · "_s +
               originOf(clipboard, settings);
    };
    showText(describe(fontMetrics().elidedText(booker.name, Qt::ElideRight, widestName)));
    setToolTip(u"<qt>"_s + describe(booker.name).toHtmlEscaped());
}
