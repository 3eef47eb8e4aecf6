#include "support/Story.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDesktopServices>
#include <QLineEdit>
#include <QListWidget>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTableWidget>
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
            "see lbl_HeldLists Payment lists that still wait: Kim (14:59, 2.50) | click btn_PrintReport | click btn_OK"_s);
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

    void memberKeptForTheNextBooking()
    {
        start();
        script(logIn + court + u" | click btn_Membership"_s);
        chooseMember();
        script(u"see txt_MemberName Maria M. | type txt_MemberTel 888 | click btn_Update | click btn_MemberPaste | "
               "click btn_Close | closed frm_Members | see lbl_Clipboard For the next booking: Maria M. | select 16:00 "
               "| click btn_Book | verify anna secret1 | "
               "see txt_BookerName Maria M. | see txt_BookerTel 888 | click cmd_OK | closed frm_Booker | "
               "grid 16:00 Maria M. | select 17:00 | click btn_Book | verify anna secret1"_s);
        script(u"see txt_BookerName  | click btn_LookMember"_s);
        chooseMember();
        play(u"click btn_MemberPaste | closed frm_Members | see txt_BookerName Maria M. | click cmd_OK | "
             "closed frm_Booker | grid 16:00 Maria M., 17:00 Maria M. | errors 0"_s);
        QCOMPARE(bookings(), u"16:00|6|Maria M.|member, 17:00|6|Maria M.|member"_s);
    }

    void paintedAndCharged()
    {
        start();
        script(logIn + court);
        openOptions(u"Rates"_s);
        d->step(u"field"_s, [] { WindowDriver::control<QComboBox>(u"cmb_RateField"_s)->setCurrentIndex(6); });
        d->pressKey(u"RateGrid"_s, Qt::Key_A, Qt::ControlModifier);
        script(
            u"type txt_RatePrice 25 | click btn_RatePaint | click btn_Save | click btn_Close | closed frm_Options"_s);
        d->step(u"a booking"_s, [this] { book(u"24:00"_s, 6, u"Smith"_s); });
        play(u"click btn_Refresh | select 24:00 | click btn_Paid | page 1 | see lbl_TotalPrice 25.00 | errors 0"_s);
        QCOMPARE(rows(u"SELECT COUNT(*), MIN(r_rate), MAX(r_rate) FROM tbl_rate WHERE r_field=6"_s).section(u'|', 1),
                 u"25.00|25.00"_s);
        QCOMPARE(rows(u"SELECT DISTINCT log_staffname FROM tbl_log WHERE log_do LIKE 'rates:%'"_s), u"boss"_s);
    }

    void fieldAddedAndBooked()
    {
        writeSettings(centre(m_server, {{u"fields"_s, u"8"_s}}));
        start();
        script(logIn + u" | key W | field 0"_s); // no ninth field yet
        openOptions(u"The centre"_s);
        script(u"click btn_AddField"_s);
        d->step(u"its name"_s, [] {
            auto *fields = WindowDriver::control<QTableWidget>(u"ListView_Fields"_s);
            fields->item(fields->rowCount() - 1, 0)->setText(u"Padel"_s);
            fields->item(fields->rowCount() - 1, 1)->setText(u"Padel court"_s);
        });
        play(u"click btn_Save | click btn_Close | closed frm_Options"_s);
        m_program.reset();
        start();
        script(logIn + u" | key W | field 8 | see lbl_FieldName Padel court | select 16:00 | click btn_Book"_s);
        play(u"verify anna secret1 | type txt_BookerName Kim | click cmd_OK | closed frm_Booker | grid 16:00 Kim"_s);
        QCOMPARE(bookings(), u"16:00|8|Kim|"_s);
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
    void chooseMember()
    {
        d->awaitWindow(u"frm_Members"_s);
        d->step(u"the member"_s, [] {
            auto *list = WindowDriver::control<QAbstractItemView>(u"ListView_Member"_s);
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualRect(list->model()->index(0, 0)).center());
        });
    }
    void openOptions(const QString &page)
    {
        script(u"click btn_Options | verify boss secret2"_s);
        d->awaitWindow(u"frm_Options"_s);
        d->step(page, [page] {
            auto *pages = WindowDriver::control<QListWidget>(u"ListView_Pages"_s);
            pages->setCurrentItem(pages->findItems(page, Qt::MatchExactly).value(0));
        });
    }

    QStringList m_opened;
};

STORY_MAIN(tst_StoriesOfTheHouse)
#include "tst_StoriesOfTheHouse.moc"
