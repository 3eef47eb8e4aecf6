#include "app/Application.h"
#include "options/RateGrid.h"
#include "options/page_Health.h"
#include "options/page_Rates.h"
#include "options/page_Staff.h"
#include "options/page_Stock.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// A page alone in a window, loaded, and what a person does there.
template <typename PageKind>
struct Shown
{
    explicit Shown(Station &station) : page(new PageKind(station, u"boss"_s))
    {
        (new QVBoxLayout(&window))->addWidget(page);
        window.resize(1000, 640);
        window.show();
        page->load();
    }

    template <typename Control = QWidget>
    Control *part(const QString &name) const
    {
        auto *found = page->template findChild<Control *>(name);
        if (!found)
            throw std::invalid_argument("no control " + name.toStdString());
        return found;
    }
    void click(const QString &name) const { QTest::mouseClick(part(name), Qt::LeftButton); }
    void type(const QString &name, const QString &text) const
    {
        part<QLineEdit>(name)->clear();
        QTest::keyClicks(part(name), text);
    }
    void choose(const QString &name, const QString &text) const { part<QComboBox>(name)->setCurrentText(text); }
    [[nodiscard]] QString text(const QString &name) const { return part<QLabel>(name)->text(); }
    void select(const QString &list, const QString &name, int column = 0) const
    {
        auto *view = part<QTableView>(list);
        for (int row = 0; row < view->model()->rowCount(); ++row)
            if (view->model()->index(row, column).data() == name)
                return view->selectRow(row);
        throw std::invalid_argument("no row " + name.toStdString());
    }
    [[nodiscard]] QStringList rows(const QString &list, const QList<int> &columns) const
    {
        QStringList lines;
        const QAbstractItemModel *model = part<QTableView>(list)->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList texts;
            for (const int column : columns)
                texts << model->index(row, column).data().toString();
            lines << texts.join(u' ');
        }
        return lines;
    }

    QDialog window;
    PageKind *page;
};

} // namespace

/// The pages of the options, each alone.
class tst_OptionsPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1;"
                      "INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES ('boss', 'Secret1', 1), "
                      "('mara', 'pass', 2);"
                      "INSERT INTO tbl_item (i_id, i_name, i_type, i_currentstock) VALUES (1, 'Cola', 'Drinks', 20), "
                      "(2, 'Tea', 'Drinks', 5)"_s);
    }

    void staff()
    {
        TestStation station(m_server,
                            {u"refuse: The two passwords are not the same. Please type them again."_s,
                             u"confirm: mara will not be able to log in any more. Remove mara? [Staff] -> no"_s,
                             u"confirm: mara will not be able to log in any more. Remove mara? [Staff] -> yes"_s,
                             u"confirm: You are about to make yourself ordinary staff. You can then not open the "
                             "options again. Do it? [Staff] -> yes"_s,
                             u"refuse: boss is the only administrator who can log in. Make somebody else an "
                             "administrator first."_s});
        const Shown<page_Staff> page(station);
        QVERIFY(!page.part<QPushButton>(u"btn_RemoveStaff"_s)->isEnabled());
        page.type(u"txt_StaffLogin"_s, u"anna"_s);
        page.type(u"txt_StaffPassword"_s, u"Pw1"_s);
        page.type(u"txt_StaffPasswordAgain"_s, u"Pw2"_s);
        page.click(u"btn_AddStaff"_s);
        page.type(u"txt_StaffPasswordAgain"_s, u"Pw1"_s);
        page.click(u"btn_AddStaff"_s);
        QCOMPARE(page.part<QLineEdit>(u"txt_StaffPassword"_s)->text(), QString());
        QCOMPARE(page.rows(u"ListView_Staff"_s, {0, 1}),
                 QStringList({u"anna Staff"_s, u"boss Administrator"_s, u"mara Staff"_s}));
        page.select(u"ListView_Staff"_s, u"mara"_s);
        page.click(u"btn_RemoveStaff"_s);
        page.click(u"btn_RemoveStaff"_s);
        QCOMPARE(page.text(u"lbl_StaffDone"_s), u"mara was removed."_s);
        page.select(u"ListView_Staff"_s, u"anna"_s);
        page.type(u"txt_StaffPassword"_s, u"New1"_s);
        page.type(u"txt_StaffPasswordAgain"_s, u"New1"_s);
        page.click(u"btn_SetPassword"_s);
        page.select(u"ListView_Staff"_s, u"boss"_s);
        page.choose(u"cmb_StaffLevel"_s, u"Staff"_s);
        page.click(u"btn_SetLevel"_s);
        QCOMPARE(m_server.rows(u"SELECT st_login, st_password, st_access FROM tbl_staff ORDER BY st_login"_s),
                 QStringList({u"anna|New1|2"_s, u"boss|Secret1|1"_s}));
    }

    void stock()
    {
        TestStation station(
            m_server, {u"refuse: Please press \"Were delivered\" or \"Were counted\", or take the pieces out again."_s,
                       u"confirm: While you counted, goods were sold or delivered:\nCola: -3 since you saw 44, "
                       "so the stock becomes 37\n\nThat is right if you counted before. If you counted after, "
                       "press No, refresh the page and enter the numbers again. Record the count as it is? "
                       "[Stock take] -> yes"_s});
        const Shown<page_Stock> page(station);
        const QSignalSpy touched(page.page, &OptionsPage::touched);
        page.select(u"ListView_Stock"_s, u"Cola"_s);
        page.type(u"txt_StockCount"_s, u"24x"_s); // digits only
        QVERIFY(page.page->hasChanges() && !touched.isEmpty());
        QVERIFY(!page.page->save());
        // Typed into the list itself.
        auto *list = page.part<QTableView>(u"ListView_Stock"_s);
        list->setCurrentIndex(list->model()->index(1, 3));
        list->setFocus();
        QTest::keyClicks(list, u"6"_s);
        QTest::keyClick(page.part(u"txt_StockCell"_s), Qt::Key_Return);
        QTRY_COMPARE(page.rows(u"ListView_Stock"_s, {0, 2, 3, 4, 5}),
                     QStringList({u"Cola 20 24 44 +4"_s, u"Tea 5 6 11 +1"_s}));
        page.type(u"txt_StockReason"_s, u"Miller"_s);
        page.click(u"btn_Deliver"_s);
        QCOMPARE(page.text(u"lbl_StockDone"_s), u"Delivered: Cola +24, Tea +6"_s);
        QVERIFY(!page.page->hasChanges());

        page.select(u"ListView_Stock"_s, u"Cola"_s);
        page.type(u"txt_StockCount"_s, u"40"_s);
        page.type(u"txt_StockReason"_s, u"June"_s);
        m_server.exec(u"UPDATE tbl_item SET i_currentstock=41 WHERE i_id=1"_s);
        page.click(u"btn_StockTake"_s);
        QCOMPARE(page.text(u"lbl_StockDone"_s), u"Counted: Cola -4"_s);
        QCOMPARE(m_server.rows(u"SELECT i_currentstock FROM tbl_item ORDER BY i_id"_s),
                 QStringList({u"37"_s, u"11"_s}));
    }

    void rates()
    {
        TestStation station(m_server,
                            {u"refuse: \"5x\" is no price of an hour. Write it with a point, such as 18.50."_s,
                             u"choose: The prices of Field 1, normal rate, are not saved. Save them? [Rates] "
                             "(question: yes no CANCEL) -> cancel"_s,
                             u"choose: The prices of Field 1, normal rate, are not saved. Save them? [Rates] "
                             "(question: yes no CANCEL) -> yes"_s,
                             u"confirm: These prices were changed at another counter after you saw them. Nothing was "
                             "saved. Show them as they are now? What you painted is lost then. [Rates] -> yes"_s});
        const Shown<page_Rates> page(station);
        auto *grid = page.part<RateGrid>(u"RateGrid"_s);
        const auto at = [&](int day, int row) { return grid->cellRect(day, row).center(); };
        // Without a price the mouse only chooses.
        QTest::mousePress(grid, Qt::LeftButton, {}, at(0, 0));
        QTest::mouseMove(grid, at(1, 3));
        QTest::mouseRelease(grid, Qt::LeftButton, {}, at(1, 3));
        QVERIFY(!page.page->hasChanges());
        QCOMPARE(page.text(u"lbl_RateChosen"_s), u"Monday to Tuesday, 08:00 to 12:00: no price"_s);
        page.type(u"txt_RatePrice"_s, u"5x"_s);
        page.click(u"btn_RatePaint"_s);
        page.type(u"txt_RatePrice"_s, u"18.5"_s);
        page.click(u"btn_RatePaint"_s);
        QCOMPARE(page.text(u"lbl_RateChosen"_s), u"Monday to Tuesday, 08:00 to 12:00: 18.50"_s);
        // With one it paints: the whole day from its name, then an hour from the keyboard, after midnight.
        QTest::mousePress(grid, Qt::LeftButton, {}, at(6, 16));
        QTest::mouseMove(grid, at(6, 18));
        QTest::mouseRelease(grid, Qt::LeftButton, {}, at(6, 18));
        QTest::keyClick(grid, Qt::Key_End);
        QTest::keyClicks(grid, u"2,25"_s);
        QTest::keyClick(grid, Qt::Key_Up, Qt::ShiftModifier); // what was typed counts
        QTest::keyClick(grid, Qt::Key_Home);
        QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClicks(grid, u"7"_s);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClick(grid, Qt::Key_Left);
        QTest::keyClicks(grid, u"3"_s);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClick(grid, Qt::Key_Delete);
        page.choose(u"cmb_RateField"_s, u"Field 2"_s); // stays
        QCOMPARE(page.part<QComboBox>(u"cmb_RateField"_s)->currentText(), u"Field 1"_s);
        page.choose(u"cmb_RateField"_s, u"Field 2"_s); // saves
        QCOMPARE(ratesOf(0),
                 u"Monday 8-11 18.50, Sunday 0-1 18.50, Sunday 2-2 2.25, Sunday 8-9 7.00, Tuesday 8-11 18.50"_s);

        page.choose(u"cmb_RateFrom"_s, u"Field 1"_s);
        page.click(u"btn_RateCopyField"_s);
        grid->choose(6, 0, 6, 0);
        page.choose(u"cmb_RateDays"_s, u"Saturday"_s);
        page.click(u"btn_RateCopyDay"_s);
        QVERIFY(page.page->save());
        QCOMPARE(
            ratesOf(1),
            ratesOf(0).replace(u"Sunday 0"_s, u"Saturday 0-1 18.50, Saturday 2-2 2.25, Saturday 8-9 7.00, Sunday 0"_s));

        m_server.exec(u"INSERT INTO tbl_rate SET r_day='Monday', r_field=1, r_timestart=9, r_timestop=9, r_rate=30"_s);
        page.click(u"btn_RateAll"_s);
        QVERIFY(!page.page->save()); // somebody else was there
        QVERIFY(page.text(u"lbl_RateFaults"_s).startsWith(u"Several prices: Monday 09:00 to 10:00: "_s));
        page.click(u"btn_RateSettle"_s);
        page.click(u"btn_RateAll"_s);
        QVERIFY(page.page->save());
        QCOMPARE(page.text(u"lbl_RateFaults"_s), u"Every hour has one price."_s);
        QCOMPARE(
            m_server.rows(u"SELECT r_timestart, r_timestop, COUNT(*) FROM tbl_rate WHERE r_field=1 AND r_rate=18.5 "
                          "GROUP BY r_timestart, r_timestop"_s),
            QStringList({u"0|2|7"_s, u"8|23|7"_s}));
    }

    void health_data()
    {
        // What is done to the database or the station, and the line that tells of it.
        drawnRows(uR"(
            well            | DO 0 | ✓ good Server version
            no flush        | SET GLOBAL innodb_flush_log_at_trx_commit=2 | ! attention Sales and power failures
            small packets   | SET GLOBAL max_allowed_packet=65536 | ! attention max_allowed_packet
            a MyISAM table  | ALTER TABLE tbl_item ENGINE=MyISAM | ✗ bad Tables
            no guard        | ALTER TABLE tbl_booking DROP KEY slot_of_one_booker | ✗ bad One booker for each hour
            few numbers     | INSERT INTO tbl_counter2 SET c_transaction=30000 | ! attention Transactions, counter 2
            no numbers      | INSERT INTO tbl_counter1 SET c_receipt=32767 | ✗ bad Receipts, counter 1
            no invoices     | INSERT INTO tbl_booking SET b_invoice=32767 | ✗ bad Invoice numbers
            never backed up | INSERT INTO tbl_log SET log_counter=1, log_do='backup checked by hand', log_datetime='2026-11-14 10:00:00' | ✗ bad Backup
            fresh backup    | INSERT INTO tbl_log SET log_do='backup checked x', log_datetime='2026-11-13 04:00:00' | ✓ good Backup
            old backup      | INSERT INTO tbl_log SET log_do='backup checked x', log_datetime='2026-11-13 02:00:00' | ! attention Backup
            no table        | DROP TABLE tbl_counter2 | ✗ bad Looking at the numbers left
            clock           | clock 0 | ✓ good Clocks
            clock ahead     | clock 600 | ✗ bad Clocks
            no drawer       | DO 0 | ✓ good Cash drawer
            no printer      | DO 0 | ✓ good Receipt printer
        )"_s);
    }

    void health()
    {
        const auto [change, line] = cells<2>();
        TestStation station(m_server);
        station.settings.drawerDevice = u"none"_s;
        if (change.startsWith(u"clock"))
            station.clock = [ahead = change.section(u' ', 1).toInt()] {
                return QDateTime::currentDateTime().addSecs(ahead);
            };
        else
            m_server.exec(change);
        const Shown<page_Health> page(station);
        QTRY_VERIFY(page.template part<QPushButton>(u"btn_RunCheck"_s)->isEnabled());
        const QStringList lines = page.rows(u"ListView_Health"_s, {0, 1});
        QVERIFY2(lines.contains(line), qPrintable(lines.join(u"; "_s)));
    }

    void checkFinds()
    {
        DeedCounter counter(m_server.connectionString());
        counter.actAll(u"book 18:00 3 Whole; book 20:00 8 Single; sell 20:00 8 Single"_s);
        counter.station.settings.ThisCounter = 2;
        counter.actAll(u"book 21:00 7 Other; sell 21:00 7 Other"_s);
        TestStation station(m_server);
        const Shown<page_Health> page(station);
        const auto found = [&] {
            page.click(u"btn_RunCheck"_s);
            [&] { QTRY_VERIFY(page.part<QPushButton>(u"btn_RunCheck"_s)->isEnabled()); }();
            return page.rows(u"ListView_Health"_s, {0, 1, 2}).filter(QRegularExpression(u"2026|rules"_s)).join(u"; "_s);
        };
        QTRY_VERIFY(page.part<QPushButton>(u"btn_RunCheck"_s)->isEnabled());
        QCOMPARE(found(), u"✓ good Bookings and sales All 18 rules hold"_s);
        m_server.exec(u"UPDATE tbl_booking SET b_paid=0 WHERE b_field=7; DELETE FROM tbl_booking WHERE b_field=5"_s);
        page.page->load();
        QTRY_VERIFY(page.part<QPushButton>(u"btn_RunCheck"_s)->isEnabled());
        QCOMPARE(found(),
                 u"✗ bad 2026-11-14 18:00, Field 4 a booking without the Shared Booking row of a partner (Whole; none "
                 "on field 5); ✗ bad 2026-11-14 21:00, Field 8 a sold hour with another amount (Other; sold for "
                 "40.00, paid stands as 0.00)"_s);
    }

    // A part whose answer does not come: the window lives on, and the person ends it, or closes the page.
    void checkIsStopped()
    {
        for (const bool byClosing : {false, true}) {
            CuttingProxy proxy(m_server);
            TestStation station(m_server);
            const Shown<page_Health> page(station);
            QTRY_VERIFY(page.part<QPushButton>(u"btn_RunCheck"_s)->isEnabled());
            station.settings.ConnectionString = proxy.connectionString();
            proxy.holdAt(u"WITH RECURSIVE"_s);
            QElapsedTimer time;
            time.start();
            page.click(u"btn_RunCheck"_s);
            QTimer::singleShot(200, page.page, [&] {
                QVERIFY(proxy.waitUntilHeld());
                if (byClosing)
                    page.page->hide();
                else
                    page.click(u"btn_StopCheck"_s);
            });
            QTRY_VERIFY(!page.part<QPushButton>(u"btn_StopCheck"_s)->isEnabled());
            QTest::qWait(10); // the wait for the answer is over
            QVERIFY2(time.elapsed() < 3000, qPrintable(QString::number(time.elapsed())));
            QVERIFY(page.part<QPushButton>(u"btn_RunCheck"_s)->isEnabled());
        }
    }

private:
    [[nodiscard]] QString ratesOf(int field) const
    {
        return m_server
            .rows(u"SELECT GROUP_CONCAT(r_day, ' ', r_timestart, '-', r_timestop, ' ', r_rate ORDER BY r_day, "
                  u"r_timestart "
                  "SEPARATOR ', ') FROM tbl_rate WHERE r_special='' AND r_field="_s +
                  QString::number(field))
            .value(0);
    }

    PrivateServer m_server;
};

int main(int argc, char **argv)
{
    const Application application(argc, argv);
    tst_OptionsPages test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_OptionsPages.moc"
