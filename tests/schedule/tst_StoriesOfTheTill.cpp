#include "support/CuttingProxy.h"
#include "support/DrawnRows.h"
#include "support/Story.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString store = u"ListView_Store"_s;
const QString cart = u"ListView_Cart"_s;

/// What a list shows, its columns joined by blanks.
QString rowsOf(const QString &name, int columns)
{
    QStringList texts;
    const auto *table = WindowDriver::control<QTableView>(name);
    for (int row = 0; table && row < table->model()->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < columns; ++column)
            cells << table->model()->index(row, column).data().toString();
        texts << cells.join(u' ');
    }
    return texts.join(u", "_s);
}

} // namespace

/// Sales at the counter: by touch, by keys, by scanner, and what may come between.
class tst_StoriesOfTheTill : public Story
{
    Q_OBJECT

private Q_SLOTS:
    void byTouch()
    {
        stock();
        hours();
        login();
        script(u"select 16:00 17:00 | click btn_Paid | answer The customer got member rate | page 1 | "
               "see lbl_TotalPrice 70.00"_s);
        tap(u"Cola"_s);
        script(u"click lbl_Key_2 | click lbl_OK | closed frm_Calculator"_s);
        tap(u"Misc"_s);
        script(u"type txt_ItemPrice 1.255 | click txt_OK | closed frm_MiscItem"_s);
        tap(u"Bar"_s);
        script(u"click lbl_Key_1 | click lbl_OK | closed frm_Calculator | see lbl_TotalPrice 78.01"_s);
        showsCart(u"Field Number 7 14/11/2026 16:00 40.00 1 40.00, Field Number 7 14/11/2026 17:00 30.00 1 30.00, "
                  "Cola 2.50 2 5.00, Misc 1.26 1 1.26, Bar 1.75 1 1.75"_s);
        script(u"click btn_Pay | click btn_OK | answer Incorrect amount given! | type txt_e 9999 | "
               "see txt_Change 21.98 | click btn_OK"_s);
        gone();
        script(u"click btn_Close | closed frm_Change | see lbl_TotalPrice  | see lbl_LastChange Last change 21.98"_s);
        showsCart({});
        play(u"page 0 | click btn_Paid | answer The slot already paid | errors 1"_s);
        QCOMPARE(sales(), u"1 40, 1 30, 1 5, 1 1.26, 1 1.75"_s);
        QCOMPARE(rows(u"SELECT i_name, i_currentstock FROM tbl_item WHERE i_currentstock<>9 ORDER BY 1"_s),
                 u"Bar|8, Cola|7, Misc|8"_s);
        QCOMPARE(rows(u"SELECT b_paid FROM tbl_booking ORDER BY b_datetime"_s), u"40.00, 30.00"_s);
    }

    void byKeysOnly()
    {
        stock();
        login();
        script(u"key F2 | behind txt_ItemQuantity 0"_s); // also from another page
        keys(u"1"_s);
        script(u"enter lbl_OK | closed frm_Calculator | key / | see txt_Find "_s);
        keys(u"sweet"_s);
        script(u"enter txt_Find"_s);
        keys(u"3"_s);
        script(u"enter lbl_OK | closed frm_Calculator"_s);
        showsCart(u"Cola 2.50 1 2.50, Bar 1.75 3 5.25"_s);
        script(u"key /"_s);
        keys(u"p"_s);
        script(u"see txt_Find p | key Esc | see txt_Find  | key P | see txt_Total 7.75"_s);
        keys(u"1000"_s);
        script(u"see txt_Change 2.25 | enter txt_e"_s);
        gone();
        play(u"click btn_Close | closed frm_Change | see lbl_TotalPrice "_s);
        QCOMPARE(sales(), u"1 2.5, 1 5.25"_s);
    }

    void byScanner()
    {
        stock();
        login();
        script(u"page 1"_s);
        for (int i = 0; i < 2; ++i) {
            scan(u"4006381333931"_s);
            script(u"see lbl_Number 1 | enter lbl_OK | closed frm_Calculator"_s);
        }
        script(u"key /"_s);
        scan(u"4006381333931"_s);
        keys(u"4"_s);
        script(u"see lbl_Number 4 | enter lbl_OK | closed frm_Calculator | see txt_Find "_s);
        scan(u"4006381333931"_s); // over the pad of the one before: that is one piece
        scan(u"4006381333931"_s);
        script(u"see lbl_Number 1 | behind txt_ItemQuantity 0 | click btn_Cancel | closed frm_Calculator | "
               "click btn_Delete | see lbl_TotalPrice 72.00 | key Esc"_s);
        scan(u"4711"_s); // nobody knows it, and it chooses nothing
        script(u"see lbl_TillNote No item has the key 4711 | key /"_s);
        scan(u"999999999"_s);
        script(u"see lbl_TillNote No item has the key 999999999"_s);
        showsCart(u"Ball 12.00 1 12.00, Ball 12.00 1 12.00, Ball 12.00 4 48.00"_s);
        // The customer's amount is no barcode, and a scan ends no sale.
        script(u"key Esc | key P | see txt_e "_s);
        scan(u"96385074"_s);
        play(u"see txt_e  | see txt_Change -72.00 | click btn_Cancel | closed frm_Change | errors 0"_s);
    }

    void mistakes()
    {
        stock();
        login();
        script(u"key F2"_s);
        keys(u"40000"_s);
        script(u"enter lbl_OK | error Unknown Error | click btn_Cancel | closed frm_Calculator | key F2"_s);
        keys(u"0"_s);
        script(u"enter lbl_OK | closed frm_Calculator | key F2"_s);
        keys(u"2"_s);
        script(u"enter lbl_OK | closed frm_Calculator | see lbl_TotalPrice 5.00 | click btn_Delete | "
               "see lbl_TotalPrice 0.00 | key F2"_s);
        keys(u"2"_s);
        script(u"enter lbl_OK | closed frm_Calculator | click btn_Pay | type txt_e 1 | click btn_OK | "
               "answer Incorrect amount given! | click btn_Cancel | closed frm_Change | see lbl_TotalPrice 5.00 | "
               "click btn_Reset | see lbl_TotalPrice  | click btn_BringBack | see lbl_TotalPrice 5.00"_s);
        showsCart(u"Cola 2.50 2 5.00"_s);
        play();
        QCOMPARE(sales(), QString());
    }

    void holdAndRecall()
    {
        stock();
        login();
        script(u"key F2"_s);
        keys(u"2"_s);
        script(u"enter lbl_OK | closed frm_Calculator | click btn_Hold | type txt_Answer Smith | "
               "enter txt_Answer | see lbl_TotalPrice  | see btn_Held On hold: 1 | key F2"_s);
        keys(u"1"_s);
        play(u"enter lbl_OK | closed frm_Calculator | see lbl_TotalPrice 2.50"_s);
        crash();
        login();
        script(u"answer The payment list of 14:59 is back | page 1 | see lbl_TotalPrice 2.50 | click btn_Reset | "
               "see btn_Held On hold: 1 | click mnu_Held_0 | see lbl_TotalPrice 5.00 | see btn_Held -"_s);
        showsCart(u"Cola 2.50 2 5.00"_s);
        play(u"errors 0"_s);
    }

    void serverGoesInTheMiddle()
    {
        stock();
        hours();
        login();
        script(u"select 16:00 | click btn_Paid | page 1 | click btn_Pay | type txt_e 5000 | server goes | "
               "click btn_OK | error Error while accessing database | server comes | click btn_OK"_s);
        gone();
        play(u"click btn_Close | closed frm_Change | see lbl_TotalPrice "_s);
        QCOMPARE(sales(), u"1 40"_s);
    }

    void answerLost_data()
    {
        // What became of the commit; what staff are told.
        drawnRows(uR"(
            unsent     | The sale was not recorded: the connection to the database was lost. Please try again.
            unanswered | The sale was recorded as transaction 1, although the database's answer was lost.
            unknown    | The payment list of 14:59 was recorded as transaction 1.
        )"_s);
    }

    void answerLost()
    {
        const auto [told] = cells<1>();
        const QByteArray way = QTest::currentDataTag();
        stock();
        CuttingProxy proxy(m_server);
        startBehind(proxy);
        script(logIn + u" | key F2"_s);
        keys(u"2"_s);
        script(u"enter lbl_OK | closed frm_Calculator | click btn_Pay | type txt_e 500"_s);
        d->step(u"the commit goes"_s, [&, way] {
            proxy.cutAt(u"COMMIT"_s, way == "unsent" ? CuttingProxy::Cut::Unsent : CuttingProxy::Cut::Unanswered,
                        way == "unknown");
        });
        script(u"press btn_OK"_s);
        if (way == "unknown") {
            d->await(u"nobody knows"_s, [] { return textOf(u"frm_Message"_s) != u"-"; });
            d->step(u"ok"_s,
                    [] { WindowDriver::control<QMessageBox>(u"frm_Message"_s)->button(QMessageBox::Ok)->click(); });
            script(u"settled"_s);
            d->step(u"the network is back"_s, [&] { proxy.pass(); });
            script(u"press btn_OK"_s);
        }
        script(u"answer "_s + told);
        if (way == "unsent")
            script(u"settled | press btn_OK"_s);
        gone();
        play(u"click btn_Close | closed frm_Change | see lbl_TotalPrice "_s);
        QCOMPARE(sales(), u"1 5"_s);
    }

    // A power cut between the commit and the customer's change, or before anybody heard of the commit.
    void crashAroundTheCommit()
    {
        stock();
        login();
        script(u"key F2"_s);
        keys(u"2"_s);
        play(u"enter lbl_OK | closed frm_Calculator | click btn_Pay | type txt_e 500 | click btn_OK | "
             "error Unknown Error | see btn_Close &Close"_s);
        crash();
        login();
        script(u"key F2"_s); // nothing came back
        keys(u"1"_s);
        play(u"enter lbl_OK | closed frm_Calculator | see lbl_TotalPrice 2.50"_s);
        crash();
        m_server.exec(u"INSERT INTO tbl_counter1 SET c_datetime='2026-11-14 14:59:59', c_item='Cola', c_itemprice=2.5, "
                      "c_itemquantity=1, c_itemtotal=2.5, c_transaction=2"_s);
        login();
        play(u"answer The payment list of 14:59 was recorded as transaction 2. | page 1 | see lbl_TotalPrice "_s);
    }

    void soldElsewhere()
    {
        stock();
        hours();
        login();
        play(u"select 16:00 | click btn_Paid | page 1 | see lbl_TotalPrice 40.00"_s);
        m_server.exec(u"UPDATE tbl_booking SET b_paid=40"_s);
        script(
            u"key P | type txt_e 5000 | click btn_OK | answer pitch6 16:00 was paid at another counter\n\nNothing was "
            "recorded. Remove what has changed and pay again. | closed frm_Change"_s);
        expect(u"⚠ pitch6 16:00 was paid at another counter"_s,
               [] { return rowsOf(cart, 5).section(u" 1 40.00 "_s, 1); });
        play(u"click btn_Delete | see lbl_TotalPrice 0.00"_s);
        QCOMPARE(sales(), QString());
    }

    void receiptAndInvoice()
    {
        stock();
        hours();
        login();
        script(u"select 16:00 | click mnu_PrintInvoice | see lbl_ReceiptNumber NO A 0001 | see lbl_Title INVOICE | "
               "see lbl_Amount $ 40.00 | click btn_Close | closed frm_PrintReceipt | select 16:00 | click btn_Paid | "
               "page 1 | key P | click btn_Exact | click btn_OK"_s);
        gone();
        script(
            u"click btn_PrintReceipt | see lbl_ReceiptNumber NO A 0001 | see lbl_Title OFFICIAL RECEIPT | "
            "see lbl_Description_0 Field Number 7 14/11/2026 16:00 | click btn_Close | closed frm_PrintReceipt | "
            "click btn_Close | closed frm_Change | click btn_PrintOldReceipt | type txt_Answer 7 | enter txt_Answer | "
            "answer No transaction by that number | click btn_PrintOldReceipt | type txt_Answer 1 | enter txt_Answer | "
            "see lbl_Amount $ 40.00 | click btn_Close | closed frm_PrintReceipt"_s);
        play(u"errors 1"_s);
        QCOMPARE(rows(u"SELECT b_invoice FROM tbl_booking ORDER BY b_datetime"_s), u"1, 0"_s);
        QCOMPARE(rows(u"SELECT log_do FROM tbl_log WHERE log_do LIKE '%Printed%'"_s),
                 u"Invoice Printed 1, Receipt Printed 1"_s);
    }

private:
    void login()
    {
        start();
        script(logIn + court);
    }

    /// As when the power is cut.
    void crash()
    {
        d = std::make_unique<WindowDriver>();
        m_program.reset();
    }

    void stock() const
    {
        m_server.exec(u"INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price, i_currentstock) VALUES "
                      "(1, 'Cola', 'Drinks', 'F2', 2.5, 9), (2, 'Bar', 'Sweets', 'F3', 1.75, 9), "
                      "(3, 'Ball', 'Sport', '4006381333931', 12, 9), (4, 'Misc', 'Sweets', '', 0, 9)"_s);
    }

    void hours() const
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        book(u"17:00"_s, 6, u"Maria M."_s);
        m_server.exec(u"UPDATE tbl_booking SET b_specialrate='member' WHERE b_bookername='Maria M.'; "
                      "INSERT INTO tbl_rate (r_day, r_field, r_special, r_timestart, r_timestop, r_rate) VALUES "
                      "('Saturday', 6, '', 8, 23, 40), ('Saturday', 6, 'member', 8, 23, 30)"_s);
    }

    void tap(const QString &item)
    {
        d->await(store, [] { return WindowDriver::find(store); });
        d->step(u"tap "_s + item, [=] {
            auto *table = WindowDriver::control<QTableView>(store);
            const auto *model = table->model();
            const auto found = model->match(model->index(0, 0), Qt::DisplayRole, item, 1, Qt::MatchExactly);
            const QRect cell = table->visualRect(found.value(0));
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {cell.center().x(), cell.bottom() - 8});
        });
    }

    /// To whatever has the focus, in the window that is open.
    void keys(const QString &keys)
    {
        d->step(u"keys "_s + keys, [=, this] {
            for (const QChar key : keys) {
                QWidget *window = QApplication::activeModalWidget();
                if (!window)
                    window = m_program->mainWindow();
                QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, key.toLatin1());
            }
        });
    }
    void scan(const QString &code) { keys(code + u'\r'); }
    /// No drawer stands on this desk.
    void gone() { script(u"error Unknown Error"_s); }
    void showsCart(const QString &wanted)
    {
        expect(wanted, [] { return rowsOf(cart, 4); });
    }

    [[nodiscard]] QString sales() const
    {
        return rows(u"SELECT CONCAT(c_transaction, ' ', c_itemtotal + 0e0) FROM tbl_counter1 ORDER BY c_id"_s);
    }
};

STORY_MAIN(tst_StoriesOfTheTill)
#include "tst_StoriesOfTheTill.moc"
