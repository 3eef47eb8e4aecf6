#include "app/RateType.h"
#include "booking/BookerForm.h"
#include "booking/frm_Booker.h"
#include "booking/frm_WaitingList.h"
#include "records/frm_ImportCsv.h"
#include "records/frm_Item.h"
#include "records/frm_Members.h"
#include "records/frm_Members_Dynamic.h"
#include "records/frm_Students.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

template <typename Control>
Control *control(const QWidget &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        throw std::invalid_argument("no control " + name.toStdString());
    return found;
}

/// Does what a line says, steps separated by "; ": "btn_Add" presses, "txt_MemberName=Bo" types, "row 2" clicks in the
/// list, counted from 0.
void act(const QWidget &window, const QString &steps)
{
    for (const QString &step : listOf(steps)) {
        if (step.startsWith(u"btn_") || step.startsWith(u"cmd_")) {
            control<QPushButton>(window, step)->click();
        } else if (step.startsWith(u"row ")) {
            auto *list = control<QAbstractItemView>(window, window.objectName() == u"frm_Item" ? u"ListView_Item"_s
                                                                                               : u"ListView_Member"_s);
            const QRect cell = list->visualRect(list->model()->index(step.mid(4).toInt(), 0));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell.center());
        } else {
            control<QLineEdit>(window, step.section(u'=', 0, 0))->setText(step.section(u'=', 1));
        }
        QTest::qWait(step.contains(u"Search") ? 200 : 0);
    }
}

/// The names in the list, the selected one in brackets; behind a colon what the first two boxes hold.
QString shown(const QWidget &window)
{
    const bool ofItems = window.objectName() == u"frm_Item";
    auto *list = control<QAbstractItemView>(window, ofItems ? u"ListView_Item"_s : u"ListView_Member"_s);
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QString name = list->model()->index(row, ofItems ? 0 : 1).data().toString();
        names << (list->selectionModel()->isRowSelected(row) ? u'[' + name + u']' : name);
    }
    const QString kind = ofItems ? u"Item"_s : u"Member"_s;
    const QString all = names.join(u' ') + u": "_s + control<QLineEdit>(window, u"txt_"_s + kind + u"ID"_s)->text() +
                        u' ' + control<QLineEdit>(window, u"txt_"_s + kind + u"Name"_s)->text();
    return all.simplified();
}

QString text(const QWidget &window, const QString &name)
{
    return control<QLineEdit>(window, name)->text();
}

/// What the window of an import says of the lines: "2 update; 3 add".
QString deedsOf(const QWidget &window)
{
    const auto *lines = control<QAbstractItemView>(window, u"ListView_Import"_s)->model();
    QStringList texts;
    for (int row = 0; row < lines->rowCount(); ++row)
        texts << lines->index(row, 0).data().toString() + u' ' + lines->index(row, 1).data().toString();
    return texts.join(u"; "_s);
}

/// Does something in the next modal window.
void whenModal(const std::function<void(const QWidget &)> &work)
{
    auto *asking = new QTimer(qApp);
    QObject::connect(asking, &QTimer::timeout, asking, [asking, work] {
        if (const QWidget *over = QApplication::activeModalWidget()) {
            asking->stop();
            asking->deleteLater();
            work(*over);
        }
    });
    asking->start(10);
}

const QString unsaved =
    u"choose: What you entered is not saved yet. Save it now? [Members] (warning: yes no CANCEL) -> "_s;

} // namespace

/// The windows of the registers, and those into which they fill a customer.
class tst_RegisterWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_member (m_idno, m_name, m_hour, m_org, m_tel) VALUES "
                      "('M000001', 'Ann', 4, 'Rovers', '22'), ('M000002', 'Bo', 12, '', ''), ('M3', 'Cy', 0, '', '33');"
                      "INSERT INTO tbl_student (st_idno, st_name, st_tel) VALUES ('S000001', 'Sue', '44');"
                      "INSERT INTO tbl_specialgroup1 (m_idno, m_name) VALUES ('G000001', 'Gil');"
                      "INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price) VALUES "
                      "(7, 'Cola', 'Drinks', 'F1', 2.50), (3, 'Ball', 'Sports', '', 12)"_s);
    }

    void flows_data()
    {
        // What is done in the window, what is asked meanwhile, what it shows at the end.
        drawnRows(uR"(
            opened               |                                               |        | Ann Bo Cy:
            next goes down       | btn_Next; btn_Next                            |        | Ann [Bo] Cy: M000002 Bo
            and stops            | row 1; btn_Next; btn_Next; btn_Next           |        | Ann Bo [Cy]: M3 Cy
            previous stops       | row 1; btn_Previous; btn_Previous             |        | [Ann] Bo Cy: M000001 Ann
            searched             | txt_SearchMemberName=o                        |        | Bo:
            search keeps the row | row 1; txt_SearchMemberName=o                 |        | [Bo]: M000002 Bo
            search drops the row | row 1; txt_SearchMemberName=y                 |        | Cy:
            search cleared       | txt_SearchMemberName=y; row 0; btn_ClearSearchField; txt_SearchMemberName= | | Ann Bo [Cy]: M3 Cy
            added                | btn_Add; txt_MemberID=M2; txt_MemberName=Al; btn_Update | | Ann Bo [Al] Cy: M2 Al
            added out of sight   | txt_SearchMemberName=o; btn_Add; txt_MemberID=M2; txt_MemberName=Al; btn_Update | | Ann Bo [Al] Cy: M2 Al
            twice is an update   | btn_Add; txt_MemberID=M2; txt_MemberName=Al; btn_Update; txt_MemberName=Ali; btn_Update | | Ann Bo [Ali] Cy: M2 Ali
            renamed              | row 0; txt_MemberName=Zoe; btn_Update         |        | [Zoe] Bo Cy: M000001 Zoe
            bad hours stay       | row 0; txt_MemberHour=x; btn_Update           | refuse: Hours must be a whole number, such as 12. | [Ann] Bo Cy: M000001 Ann
            click, stay          | row 0; txt_MemberName=Z; row 1                | cancel | [Ann] Bo Cy: M000001 Z
            click, drop          | row 0; txt_MemberName=Z; row 1                | no     | Ann [Bo] Cy: M000002 Bo
            click, save          | row 0; txt_MemberName=Z; row 1                | yes    | Z [Bo] Cy: M000002 Bo
            next, stay           | row 0; txt_MemberName=Z; btn_Next             | cancel | [Ann] Bo Cy: M000001 Z
            add, stay            | row 0; txt_MemberName=Z; btn_Add              | cancel | [Ann] Bo Cy: M000001 Z
            add twice, drop      | btn_Add; txt_MemberName=Z; btn_Add            | no     | Ann Bo Cy:
            refresh, drop        | row 0; txt_MemberName=Z; btn_Refresh          | no     | [Ann] Bo Cy: M000001 Ann
            search, stay         | row 0; txt_MemberName=Z; txt_SearchMemberName=o | cancel | [Ann] Bo Cy: M000001 Z
            search, drop         | row 0; txt_MemberName=Z; txt_SearchMemberName=o | no   | Bo:
            search, save         | row 0; txt_MemberName=Z; txt_SearchMemberName=o | yes  | Bo:
            search that keeps it | row 0; txt_MemberName=Z; txt_SearchMemberName=a |      | [Ann]: M000001 Z
            search while adding  | btn_Add; txt_MemberName=Z; txt_SearchMemberName=o |    | Bo: Z
            close, stay          | row 0; txt_MemberName=Z; btn_Close            | cancel | [Ann] Bo Cy: M000001 Z
            paste, stay          | row 0; txt_MemberName=Z; btn_MemberPaste      | cancel | [Ann] Bo Cy: M000001 Z
            delete, no           | row 1; btn_Delete | choose: Confirm delete ? [Confirmation] (critical: yes NO) -> no | Ann [Bo] Cy: M000002 Bo
            delete, staff        | row 1; btn_Delete | choose: Confirm delete ? [Confirmation] (critical: yes NO) -> yes; verify Delete the member Bo -> anna staff | Ann [Bo] Cy: M000002 Bo
            delete, nobody       | row 1; btn_Delete | choose: Confirm delete ? [Confirmation] (critical: yes NO) -> yes; verify Delete the member Bo -> nobody | Ann [Bo] Cy: M000002 Bo
            delete, admin        | row 1; btn_Delete | choose: Confirm delete ? [Confirmation] (critical: yes NO) -> yes; verify Delete the member Bo -> boss admin | Ann Cy:
        )"_s);
    }

    void flows()
    {
        const auto [steps, asked, wanted] = cells<3>();
        const bool isAnswer = QStringList{u"yes"_s, u"no"_s, u"cancel"_s}.contains(asked);
        TestStation counter(m_server, isAnswer ? QStringList{unsaved + asked} : listOf(asked));
        frm_Members window(counter);
        window.show();
        act(window, steps);
        QTest::qWait(0);
        QCOMPARE(shown(window), wanted);
        const bool atTop = shown(window).startsWith(u'[');
        const bool atBottom = wanted.section(u':', 0, 0).endsWith(u']');
        QCOMPARE(control<QPushButton>(window, u"btn_Previous"_s)->isEnabled(), wanted.contains(u'[') && !atTop);
        QCOMPARE(control<QPushButton>(window, u"btn_Next"_s)->isEnabled(), !atBottom);
        QVERIFY(window.isVisible());
    }

    void closes()
    {
        TestStation counter(m_server, {unsaved + u"no"_s});
        frm_Members window(counter);
        window.show();
        act(window, u"row 0; txt_MemberName=Z"_s);
        QVERIFY(window.close());
        QCOMPARE(m_server.rows(u"SELECT m_name FROM tbl_member WHERE m_name='Z'"_s), QStringList());
    }

    void filledIntoTheBooking_data()
    {
        // The button, the register's row; name, telephone, rate, and the box with the number.
        drawnRows(uR"(
            member       | btn_LookMember         | 0 | Ann | 22 | member | txt_BookerMemberID       | M000001
            short number | btn_LookMember         | 2 | Cy  | 33 | member | txt_BookerMemberID       | M3
            student      | btn_LookStudent        | 0 | Sue | 44 | student | txt_BookerStudentID     | S000001
            group        | btn_LookSpecialGroup_1 | 0 | Gil |    | specialgroup1 | txt_SpecialGroupID_1 | G000001
        )"_s);
    }

    void filledIntoTheBooking()
    {
        const auto [look, row, name, telephone, rate, box, number] = cells<7>();
        TestStation counter(m_server);
        frm_WaitingList window(counter, u"anna"_s, u"2026-11-14"_s, 6);
        window.show();
        whenModal([&](const QWidget &over) { act(over, u"row %1; btn_MemberPaste"_s.arg(row)); });
        act(window, u"txt_BookerMemberID=x; "_s + look);
        QCOMPARE(text(window, u"txt_BookerName"_s), name);
        QCOMPARE(text(window, u"txt_BookerTel"_s), telephone);
        QCOMPARE(text(window, box), number);
        if (box != u"txt_BookerMemberID")
            QCOMPARE(text(window, u"txt_BookerMemberID"_s), QString());
        act(window, u"cmd_OK"_s);
        QCOMPARE(m_server.rows(u"SELECT w_bookername, w_bookertel, w_specialrate FROM tbl_waitlist"_s),
                 QStringList{name + u'|' + telephone + u'|' + rate});
    }

    void keptForTheNext()
    {
        TestStation counter(m_server);
        frm_Members members(counter);
        frm_Students students(counter);
        QSignalSpy kept(&students, &RegisterWindow::customerKept);
        members.show();
        students.show();
        act(members, u"row 1; btn_MemberPaste"_s);
        act(students, u"row 0; btn_MemberPaste"_s);
        QCOMPARE(kept.size(), 1);
        QVERIFY(members.isVisible());
        QCOMPARE(control<QLabel>(students, u"lbl_Kept"_s)->text(), u"Kept for the next booking: Sue"_s);
        const Verification anna{u"anna"_s, AccessLevel::Staff};
        const auto open = [&] {
            return std::make_unique<frm_Booker>(counter, anna, drawnDay(u"2026-11-14"_s, 6, {u"> 20:00 "_s}));
        };
        {
            const auto cancelled = open();
            act(*cancelled, u"cmd_Cancel"_s);
        }
        const auto booking = open();
        booking->show();
        QCOMPARE(control<QLabel>(*booking, u"lbl_Kept"_s)->text(), u"Filled from the register: Sue"_s);
        QVERIFY(control<QLabel>(*booking, u"lbl_Kept"_s)->isVisible());
        act(*booking, u"cmd_OK"_s);
        QCOMPARE(m_server.rows(u"SELECT b_bookername, b_specialrate FROM tbl_booking"_s),
                 QStringList{u"Sue|student"_s});
        QVERIFY(text(*open(), u"txt_BookerName"_s).isEmpty());

        act(members, u"btn_MemberPaste"_s);
        const auto cleared = open();
        act(*cleared, u"btn_ClearKept"_s);
        QCOMPARE(text(*cleared, u"txt_BookerName"_s) + text(*cleared, u"txt_BookerMemberID"_s), QString());
        QVERIFY(!counter.keptCustomer);
        act(members, u"btn_MemberPaste; btn_ForgetKept"_s);
        QVERIFY(!counter.keptCustomer);
        QVERIFY(!control<QLabel>(members, u"lbl_Kept"_s)->isVisible());
    }

    void catalogueWindow()
    {
        TestStation counter(m_server, {u"confirm: Cola waits to be paid in: the open list. What waits there keeps its "
                                       "old name and price.\n\nSave it all the same? [Save] -> yes"_s,
                                       u"choose: Confirm delete ? [Confirmation] (critical: yes NO) -> yes"_s});
        frm_Item window(counter, [](const QString &) { return QStringList{u"the open list"_s}; });
        window.show();
        QSignalSpy written(&window, &RegisterWindow::written);
        QCOMPARE(shown(window), u"Ball Cola:"_s);
        QCOMPARE(control<QLabel>(window, u"lbl_PressUpdate"_s)->text(), u"Press 'Update' when finished !"_s);
        act(window, u"row 1; txt_ItemPrice=2.75; btn_Update"_s);
        act(window,
            u"btn_Add; txt_ItemID=9; txt_ItemName=Bat; txt_ItemPrice=1; btn_Update; btn_Previous; btn_Delete"_s);
        QCOMPARE(shown(window), u"Bat Cola:"_s);
        QCOMPARE(m_server.rows(u"SELECT i_id, i_price FROM tbl_item ORDER BY 1"_s),
                 (QStringList{u"7|2.75"_s, u"9|1.00"_s}));
        QCOMPARE(written.size(), 3);
        act(window, u"txt_SearchItemName=drin"_s);
        QCOMPARE(shown(window), u"Cola:"_s);
    }

    void notDeletedUnseen()
    {
        const QString question = u"choose: Confirm delete ? [Confirmation] (critical: yes NO) -> yes"_s;
        TestStation counter(m_server, {question,
                                       u"inform: Cola was changed meanwhile and is not deleted. Please look "
                                       "at it again."_s,
                                       question});
        frm_Item window(counter);
        window.show();
        QSignalSpy written(&window, &RegisterWindow::written);
        act(window, u"row 1"_s);
        m_server.exec(u"UPDATE tbl_item SET i_price=9 WHERE i_id=7"_s);
        act(window, u"txt_ItemType=Mine; btn_Delete"_s);
        QCOMPARE(shown(window), u"Ball [Cola]: 7 Cola"_s);
        QCOMPARE(text(window, u"txt_ItemType"_s), u"Mine"_s);
        act(window, u"txt_ItemType=Drinks; btn_Refresh"_s); // nothing is entered any more
        QCOMPARE(text(window, u"txt_ItemPrice"_s), u"9.00"_s);
        QCOMPARE(written.size(), 0);
        act(window, u"btn_Delete"_s);
        QCOMPARE(shown(window), u"Ball:"_s);
        QCOMPARE(written.size(), 1);
    }

    void importOfGoods()
    {
        TestStation counter(m_server);
        const QByteArray bytes = "Number,Name,Price\r\n3,Bat,12\r\n8,ball,1\r\n7,Cola,3\r\n";
        frm_ImportCsv window(counter, catalogue(), u"goods.csv"_s, bytes, [](const QString &item) {
            return item == u"Cola" ? QStringList{u"the open list"_s} : QStringList();
        });
        window.show();
        QCOMPARE(deedsOf(window), u"2 update; 3 add; 4 update, but: Cola waits to be paid in: the open list. What "
                                  "waits there keeps its old name and price."_s);
        control<QCheckBox>(window, u"chk_Update"_s)->click(); // Ball keeps its name then
        control<QCheckBox>(window, u"chk_OnlyWrong"_s)->click();
        QCOMPARE(deedsOf(window),
                 u"3 add, but: Another item is called ball, too: a sale of one lowers the stock of both."_s);
        QVERIFY(control<QLabel>(window, u"lbl_Summary"_s)->text().endsWith(u" in full: 1."_s));
    }

    void importWindow()
    {
        TestStation counter(m_server, {u"inform"_s});
        const QByteArray bytes = "Number,Name,Tel\r\nM000002,Bob,5\r\nM9,Di,5\r\n,Ed,5\r\n";
        frm_ImportCsv window(counter, membersRegister(), u"new.csv"_s, bytes);
        window.show();
        QCOMPARE(deedsOf(window), u"2 update; 3 add; 4 WRONG: The number is missing."_s);
        QCOMPARE(control<QLabel>(window, u"lbl_Summary"_s)->text(),
                 u"1 to add, 1 to update, 0 the same already, 0 left out, 1 wrong. Columns that are not taken: Tel."_s);
        control<QCheckBox>(window, u"chk_OnlyWrong"_s)->click();
        QCOMPARE(deedsOf(window), u"4 WRONG: The number is missing."_s);
        control<QCheckBox>(window, u"chk_OnlyWrong"_s)->click();
        control<QCheckBox>(window, u"chk_Update"_s)->click();
        QCOMPARE(deedsOf(window).section(u"; "_s, 0, 0), u"2 leave out: The register has this number."_s);
        m_server.exec(u"INSERT INTO tbl_member SET m_idno='M9', m_name='Other'"_s);
        act(window, u"cmd_OK"_s); // told that the register is another one by now
        QVERIFY(window.isVisible());
        control<QCheckBox>(window, u"chk_Update"_s)->click();
        act(window, u"cmd_OK"_s);
        QCOMPARE(window.result(), int(QDialog::Accepted));
        QCOMPARE(m_server.rows(u"SELECT m_name, m_hour FROM tbl_member ORDER BY m_idno"_s),
                 (QStringList{u"Ann|4"_s, u"Bob|12"_s, u"Cy|0"_s, u"Di|0"_s}));
    }

    void filesOfTheWindow()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"members.csv"_s);
        TestStation counter(m_server, {u"inform"_s, u"inform"_s, u"inform"_s});
        frm_Members window(counter);
        window.exportTo(path);
        window.exportTo(folder.filePath(u"no/such/folder"_s));
        window.importFrom(folder.filePath(u"nothing"_s));
        m_server.exec(u"DELETE FROM tbl_member"_s);
        whenModal([](const QWidget &over) { act(over, u"cmd_OK"_s); });
        window.importFrom(path);
        QCOMPARE(shown(window), u"Ann Bo Cy:"_s);
    }

    /// Whoever uses no mouse, or hears the window, finds everything.
    void everyControlIsNamed()
    {
        TestStation counter(m_server);
        frm_Members members(counter);
        frm_Students students(counter);
        frm_Members_Dynamic group(counter, 1);
        frm_Item items(counter);
        QCOMPARE(group.windowTitle(), u"Special group 1"_s);
        QCOMPARE(shown(group), u"Gil:"_s);
        for (const RegisterWindow *window :
             std::initializer_list<RegisterWindow *>{&members, &students, &group, &items}) {
            QCOMPARE(window->objectName(), QString::fromLatin1(window->metaObject()->className()));
            QVERIFY(window->sizeHint().width() <= 1024 && window->sizeHint().height() <= 700);
            QStringList mnemonics;
            for (const QPushButton *button : window->findChildren<QPushButton *>()) {
                const QByteArray name = button->objectName().toLatin1();
                QVERIFY2(name.startsWith("btn_") && !button->isDefault() && !button->autoDefault(), name);
                QVERIFY2(!button->accessibleName().isEmpty() && button->toolTip().endsWith(u'.'), name);
                mnemonics << button->text();
            }
            for (const QLabel *label : window->findChildren<QLabel *>())
                if (label->buddy())
                    mnemonics << label->text();
            QString keys;
            for (const QString &caption : mnemonics)
                keys += caption.section(u'&', 1, 1).left(1).toLower();
            QCOMPARE(keys.size(), mnemonics.size());
            for (const QChar key : keys)
                QVERIFY2(keys.count(key) == 1, qPrintable(window->objectName() + u' ' + key));
        }
    }

private:
    PrivateServer m_server;
};

QTEST_MAIN(tst_RegisterWindows)
#include "tst_RegisterWindows.moc"
