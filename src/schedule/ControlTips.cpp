#include "schedule/ControlTips.h"

#include <QMap>
#include <QTabWidget>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

// By objectName; an element of a control array has the tip of the name before its number.
const QMap<QString, QString> &tips()
{
    static const QMap<QString, QString> all{
        {u"btn_Book"_s, u"Books the selected hours after you have said who you are (Enter)."_s},
        {u"btn_Clear"_s, u"Clears the selected hours, asks for the reason and keeps it in the history."_s},
        {u"btn_AddEntry"_s, u"Puts a caller on the waiting list of this field and day."_s},
        {u"btn_Paid"_s, u"Puts the selected hours on the payment list of the till."_s},
        {u"btn_TakeWaiting"_s, u"Takes this person off the waiting list, ready to be pasted into the free hour."_s},
        {u"Calendar"_s, u"Chooses the business day that the grid shows."_s},
        {u"Calendar2"_s, u"Chooses the day whose waiting list is shown."_s},
        {u"LayoutPlan1"_s, u"Chooses the field that the grid shows (P O I U Y T R E W for the first nine)."_s},
        {u"LayoutPlan2"_s, u"Chooses the field whose lights are switched."_s},
        {u"LayoutPlan3"_s, u"Chooses the field whose waiting list is shown."_s},
        {u"txt_Find"_s, u"Finds goods by name or type as you type; Enter takes the first one (/)."_s},
        {u"ListView_Store"_s, u"A click on an item asks how many and puts it on the payment list (F1 to F16)."_s},
        {u"ListView_Cart"_s, u"The lines that will be paid together; one of them can be selected and deleted."_s},
        {u"txt_ItemInfo"_s, u"The item that was chosen last."_s},
        {u"txt_ItemQuantity"_s, u"The quantity of the chosen item; Enter puts it on the payment list."_s},
        {u"btn_Delete"_s, u"Takes the selected line off the payment list."_s},
        {u"btn_Reset"_s, u"Empties the payment list; it can be brought back until the next line."_s},
        {u"btn_Hold"_s, u"Puts the payment list aside under a name, so that the next customer can pay."_s},
        {u"btn_Held"_s, u"Brings back one of the payment lists that were put aside."_s},
        {u"btn_BringBack"_s, u"Brings back the payment list that was emptied last."_s},
        {u"btn_NoSale"_s, u"Opens the drawer without a sale; that is noted in the activity log."_s},
        {u"btn_PrintOldReceipt"_s, u"Prints the receipt of an earlier sale, by its transaction number."_s},
        {u"btn_Pay"_s, u"Takes the money for the payment list (P, or + of the number pad)."_s},
        {u"LightSwitch"_s, u"Sets one row of lights on or off; nothing is noted before Commit."_s},
        {u"ListView_Light"_s, u"What was switched on this field before, the latest first."_s},
        {u"ListView_ShiftFigures"_s, u"What this shift has sold so far, and the money that should be in the drawer."_s},
        {u"ListView_Shifts"_s, u"The shifts that ended in the last 30 days; select one to see its goods."_s},
        {u"ListView_StockMoves"_s, u"What went out of stock in the selected shift, against what was sold."_s},
        {u"btn_AddEntry2"_s, u"Puts a caller on the waiting list of the chosen field and day."_s},
        {u"btn_CutEntry"_s, u"Takes the selected entry for pasting into the grid of bookings (Ctrl+X)."_s},
        {u"btn_ClearEntry"_s, u"Removes the selected entry from the waiting list, after a question (Delete)."_s},
        {u"txtInfo_LightSelect"_s, u"The number of the light row that was chosen last."_s},
        {u"txtInfo_FieldSelect"_s, u"The number of the chosen field, counted from 0."_s},
        {u"Text2"_s, u"The number of the chosen field, counted from 0."_s},
        {u"CurrentPlayList"_s, u"Who plays on which field in this hour."_s},
        {u"PreviousPlayList"_s, u"Who played on which field in the hour before."_s},
        {u"NextPlayList"_s, u"Who plays on which field in the next hour."_s},
        {u"HourPlayList"_s, u"Who plays on which field in the selected hour."_s},
        {u"ListView_Wait"_s, u"Everybody who waits for the chosen field and day."_s},
    };
    return all;
}

QString tipOf(const QString &name)
{
    const auto found = tips().constFind(name);
    return found != tips().constEnd() ? *found : tips().value(name.section(u'_', 0, -2));
}

} // namespace

void addControlTips(QWidget &window)
{
    for (QWidget *control : window.findChildren<QWidget *>())
        if (const QString tip = tipOf(control->objectName()); control->toolTip().isEmpty() && !tip.isEmpty())
            control->setToolTip(tip);
}

void addTabTips(QTabWidget &tabs)
{
    static const QMap<QString, QString> all{
        {u"page_Booking"_s, u"The hours of one field on one business day, and who plays when."_s},
        {u"page_Counter"_s, u"The till: goods, the payment list and what is done with it."_s},
        {u"page_Lights"_s, u"The lights of the fields, and who switched them."_s},
        {u"page_Shifts"_s, u"Ends a shift, hands the counter over, collects cash, and looks back."_s},
        {u"page_WaitingList"_s, u"Who waits for an hour that is taken."_s},
    };
    for (int tab = 0; tab < tabs.count(); ++tab)
        tabs.setTabToolTip(tab, all.value(tabs.widget(tab)->objectName()));
}
