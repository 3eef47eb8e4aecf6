#include "support/Story.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QDesktopServices>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTabWidget>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isControl(const QWidget *widget)
{
    // The grid tells the history of an hour; what stands inside a control or a scroll bar has its tip.
    if (widget->objectName() == grid || widget->objectName().startsWith(u"qt_"))
        return false;
    for (const QWidget *around = widget->parentWidget(); around; around = around->parentWidget())
        if (qobject_cast<const QCalendarWidget *>(around) || qobject_cast<const QAbstractSpinBox *>(around) ||
            qobject_cast<const QAbstractItemView *>(around) || qobject_cast<const QLineEdit *>(around) ||
            qobject_cast<const QTabBar *>(around))
            return false;
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QCalendarWidget *>(widget);
}

} // namespace

/// What is done around the bookings and the till: shifts, registers, options, reports.
class tst_StoriesOfTheHouse : public Story
{
    Q_OBJECT

public Q_SLOTS:
    void openAddress(const QUrl &address) { m_opened << address.toString(); }

private Q_SLOTS:
    void wholeShift()
    {
        m_server.exec(u"INSERT INTO tbl_item SET i_id=1, i_name='Cola', i_key='F2', i_price=2.5, i_currentstock=9; "
                      "INSERT INTO tbl_staff (st_login, st_password) VALUES ('ben', 'secret3')"_s);
        writeSettings(centre(m_server, {{u"cashdrawerdevice"_s, u"none"_s}}));
        QDesktopServices::setUrlHandler(u"http"_s, this, "openAddress");
        const auto handled = qScopeGuard([] { QDesktopServices::unsetUrlHandler(u"http"_s); });
        start();
        script(logIn +
               u" | key F2 | click lbl_Key_4 | click lbl_OK | closed frm_Calculator | key P | type txt_e 1000 | "
               "click btn_OK | click btn_Close | closed frm_Change"_s);
        // Ben takes over, the boss takes money away, and a list is parked.
        script(u"page 3 | click btn_HandOver | verify ben secret3 | type txt_CashRegister 110 | click btn_OK"_s);
        d->answer(u"Are you sure that the values is correct?"_s, QMessageBox::Cancel);
        script(
            u"click btn_OK | answer Are you sure that the values is correct? | "
            "answer Please close the cash register now! | closed frm_HandOver | behind lbl_Counter Counter 1\r\nben"_s);
        script(u"click btn_CollectCash | verify ben secret3 | answer Only an administrator may collect cash. | "
               "click btn_CollectCash | verify boss secret2 | type txt_Amount 4 dollars | see lbl_ReadAmount This is "
               "read as 4. | click btn_OK | answer Are you sure that the values is correct? | "
               "answer Please close the cash register now! | closed frm_CollectCash"_s);
        script(
            u"key F2 | click lbl_Key_1 | click lbl_OK | closed frm_Calculator | click btn_Hold | type txt_Answer Kim | "
            "enter txt_Answer | closed frm_AskText | page 3 | click btn_EndEveningShift"_s);
        d->answer(u"Are you REALLY sure that you closing an EVENING Shift?"_s, QMessageBox::Yes);
        script(
            u"see frm_ShiftEnd End of evening shift | click btn_OK | "
            "answer Count the drawer first: the money in it and the float are both needed. | type num_Pieces_500 1 | "
            "type num_Pieces_50 1 | see txt_MoneyInDrawer 5.5 | type txt_CashFloat 1 | see txt_Sales 4.5 | "
            "see lbl_Difference 5.50 counted, 6.00 should be in the drawer: 0.50 short | "
            "see lbl_HeldLists Payment lists still on hold: Kim (14:59, 2.50) | click btn_PrintReport | click btn_OK"_s);
        script(u"answer Are you sure that the values is correct? | see btn_Cancel Close | click btn_PrintSlip | "
               "see lbl_Title SHIFT SLIP | see lbl_Amount $ 4.50 | click btn_Close | closed frm_PrintReceipt | "
               "click btn_Cancel | closed frm_Main"_s);
        play(u"type txtLogin anna | type txtPassword secret1 | click btn_GO | closed frm_Login "
             u"| "
             "see lbl_Counter Counter 1\r\nanna | errors 0"_s);
        QCOMPARE(m_opened, QStringList{u"http://localhost/report/counter.asp?counter=1"_s});
        QCOMPARE(rows(u"SELECT sh_sales, sh_totalmoney, sh_float, sh_shift, sh_stocklog, sh_staff FROM tbl_shift1"_s),
                 u"4.50|5.50|1.00|evening|Cola=5||ben"_s);
        QCOMPARE(rows(u"SELECT sys_doclose, sys_counterstaff FROM tbl_system WHERE sys_counter=1"_s), u"0|anna"_s);
        QCOMPARE(rows(u"SELECT log_staffname, log_do FROM tbl_log ORDER BY log_id"_s),
                 u"anna|logging in, anna|Sales made, drawer open, anna|HandOver requested by ben, drawer open, "
                 "anna|Handover at 110, will change user now, ben|logging in, ben|Cash Collected 4, "
                 "ben|ben evening Shift Ended , ben|log out, anna|logging in"_s);
    }

    void everyControlHasATip()
    {
        start();
        play(logIn);
        QStringList bare;
        for (const QWidget *widget : m_program->mainWindow()->findChildren<QWidget *>())
            if (isControl(widget) && !widget->toolTip().endsWith(u'.'))
                bare << QLatin1StringView(widget->metaObject()->className()) + u' ' + widget->objectName();
        const auto *tabs = part<QTabWidget>(u"SSTab1"_s);
        for (int tab = 0; tab < tabs->count(); ++tab)
            if (!tabs->tabToolTip(tab).endsWith(u'.'))
                bare << tabs->tabText(tab);
        QCOMPARE(bare.mid(0, 6).join(u" "_s), QString());
    }

private:
    QStringList m_opened;
};

STORY_MAIN(tst_StoriesOfTheHouse)
#include "tst_StoriesOfTheHouse.moc"
