#include "app/Conversions.h"
#include "app/Station.h"
#include "counter/AmountGiven.h"
#include "counter/ItemQuantity.h"
#include "counter/frm_Calculator.h"
#include "counter/frm_Change.h"
#include "counter/frm_DrawerOpen.h"
#include "counter/frm_MiscItem.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A counter without a drawer, and what its person says.
struct Counter : ScriptedPrompts, Station
{
    explicit Counter(const QStringList &script = {}) : ScriptedPrompts(script), Station({}, *this)
    {
        settings.drawerDevice = u"none"_s;
    }
};

QPushButton *button(const QWidget &window, const QString &name)
{
    auto *found = window.findChild<QPushButton *>(name);
    if (!found)
        throw std::invalid_argument("no button " + name.toStdString());
    return found;
}

QString text(const QWidget &window, const QString &name)
{
    if (const auto *box = window.findChild<QLineEdit *>(name))
        return box->text();
    const auto *label = window.findChild<QLabel *>(name);
    return label ? label->text() : u"(no such control)"_s;
}

/// "12<3" is 1, 2, Backspace, 3; "^" is an arrow, "~" Delete.
void key(QWidget &window, const QString &keys)
{
    for (const QChar each : keys) {
        const QString signs = u"<^~"_s;
        constexpr std::array codes{Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Delete};
        QWidget *focus = window.focusWidget() ? window.focusWidget() : &window;
        if (signs.contains(each))
            QTest::keyClick(focus, codes.at(std::size_t(signs.indexOf(each))));
        else
            QTest::keyClick(focus, each.toLatin1());
    }
}

void pressEnter(QWidget &window, bool isHeld = false)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, isHeld);
    QCoreApplication::sendEvent(window.focusWidget() ? window.focusWidget() : &window, &press);
}

/// The change window for a total, shown, and what it asked for.
struct Paying
{
    explicit Paying(Counter &counter, const QString &total)
        : window(counter, total, {[this] { return ++settled, settling(); }, [this] { ++printed; }})
    {
        window.show();
    }
    /// What it shows of the money: amount, change, words.
    [[nodiscard]] QString shown() const
    {
        return text(window, u"txt_AmountPaid"_s) + u" / "_s + text(window, u"txt_Change"_s) + u" / "_s +
               text(window, u"lbl_ChangeWords"_s);
    }

    int settled = 0;
    int printed = 0;
    std::function<bool()> settling = [] { return true; };
    frm_Change window;
    QSignalSpy change{&window, &frm_Change::changeGiven};
    QSignalSpy closed{&window, &frm_Change::saleClosed};
};

} // namespace

class tst_Change : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QApplication::setDoubleClickInterval(400); }

    void amountIsKeyed_data()
    {
        drawnRows(uR"(
            one digit       | 5        | 0.04       | 00.05      | .05      | .01
            two digits      | 50       | 0.5        | 00.50      | .50      | .00
            three           | 123      | 1.23       | 1.23       | 1.23     | .00
            five            | 12345    | 100        | 123.45     | 123.45   | 23.45
            leading zeros   | 00500    | 7.50       | 005.00     | 5.00     | -2.50
            taken back      | 12<3     | 1          | 00.13      | .13      | -.87
            nothing left    | 1<<      | 0.10       | 00.00      | .00      | -.10
            other keys      | 1a-.^~2  | 0          | 00.12      | .12      | .12
            three tenths    | 30       | 0.10       | 00.30      | .30      | .20
            sum of tenths   | 30       | 0.30000000000000004 | 00.30 | .30    | .00
            large           | 1000000001 | 9999999.99 | 10000000.01 | 10000000.01 | .02
            a scanned number | 4006381333931 | 12.50 | 40063813339.31 | 40063813339.31 |
        )"_s);
    }

    void amountIsKeyed()
    {
        const auto [keys, total, amount, paid, change] = cells<5>();
        Counter counter;
        Paying paying(counter, total);
        QCOMPARE(paying.shown(), u" /  / Key the amount given"_s);
        key(paying.window, keys);
        QCOMPARE(amountOfDigits(text(paying.window, u"txt_e"_s)), amount);
        QCOMPARE(paying.shown().section(u" / "_s, 0, 1), paid + u" / "_s + change);
    }

    void offersWhatCustomersHandOver_data()
    {
        drawnRows(uR"(
            between notes | 37.50  | 4000 5000 10000
            a note itself | 20.00  | 5000 10000
            small         | 0.90   | 500 1000 2000 5000 10000
            above all     | 160.00 | 20000
            nothing       | 0.00   |
            to give back  | -3.00  |
        )"_s);
    }

    void offersWhatCustomersHandOver()
    {
        const auto [total, offered] = cells<2>();
        QStringList amounts;
        for (const qint64 amount : amountsAbove(centsOf(total), AppSettings().tillNotes))
            amounts << QString::number(amount);
        QCOMPARE(amounts.join(u' '), offered);
    }

    void moneyIsTakenByTouch()
    {
        Counter counter;
        Paying paying(counter, u"37.50"_s);
        for (const QString &name : {u"btn_Key_4"_s, u"btn_Key_1"_s, u"btn_Key_Back"_s, u"btn_Key_00"_s})
            QTest::mouseClick(button(paying.window, name), Qt::LeftButton);
        QCOMPARE(paying.shown(), u"4.00 / -33.50 / Still to pay 33.50"_s);
        button(paying.window, u"btn_Exact"_s)->click();
        QCOMPARE(paying.shown(), u"37.50 / .00 / Paid, no change"_s);
        button(paying.window, u"btn_Note_1"_s)->click();
        QCOMPARE(paying.shown(), u"50.00 / 12.50 / Change 12.50"_s);
        for (const QPushButton *each : paying.window.findChildren<QPushButton *>())
            QVERIFY2(each->height() >= 44 && each->width() >= 60, qPrintable(each->objectName()));
        QTest::mouseClick(button(paying.window, u"btn_OK"_s), Qt::LeftButton);
        QCOMPARE(paying.settled, 1);
        QCOMPARE(paying.change.size(), 1);
        QCOMPARE(paying.change.front().front().toString(), u"12.50"_s);

        // The window now waits for nothing but a receipt and its end; it keeps what it shows.
        QVERIFY(!button(paying.window, u"btn_OK"_s)->isVisible() &&
                !button(paying.window, u"btn_Cancel"_s)->isVisible());
        key(paying.window, u"7<"_s);
        button(paying.window, u"btn_Exact"_s)->click();
        button(paying.window, u"btn_OK"_s)->click();
        QCOMPARE(paying.shown(), u"50.00 / 12.50 / Change 12.50"_s);
        QCOMPARE(paying.settled, 1);
        button(paying.window, u"btn_PrintReceipt"_s)->click();
        QCOMPARE(paying.printed, 1);
        QVERIFY(paying.closed.isEmpty());
        QTest::mouseClick(button(paying.window, u"btn_Close"_s), Qt::LeftButton);
        QCOMPARE(paying.closed.size(), 1);
        QCOMPARE(paying.window.result(), int(QDialog::Accepted));
    }

    void tooLittleSettlesNothing()
    {
        Counter counter({u"refuse: Incorrect amount given!"_s, u"refuse: Incorrect amount given!"_s});
        Paying paying(counter, u"5.00"_s);
        button(paying.window, u"btn_OK"_s)->click();
        key(paying.window, u"499"_s);
        pressEnter(paying.window);
        key(paying.window, u"96385074"_s); // a scan
        pressEnter(paying.window);
        button(paying.window, u"btn_PrintReceipt"_s)->click();
        button(paying.window, u"btn_Close"_s)->click();
        QCOMPARE(paying.settled + paying.printed, 0);
        QVERIFY(paying.window.isVisible());
        QTest::keyClick(paying.window.focusWidget(), Qt::Key_Escape);
        QVERIFY(!paying.window.isVisible());
        QCOMPARE(paying.window.result(), int(QDialog::Rejected));
        QCOMPARE(paying.change.size() + paying.closed.size(), 0);
    }

    void secondPressesDoNothing()
    {
        Counter counter;
        Paying paying(counter, u"5.00"_s);
        QApplication::setDoubleClickInterval(3600'000);
        key(paying.window, u"1000"_s);
        pressEnter(paying.window, true); // still held from the window before
        QCOMPARE(paying.settled, 0);
        pressEnter(paying.window);
        for (const bool isHeld : {true, false, true, false})
            pressEnter(paying.window, isHeld);
        QTest::keyClick(paying.window.focusWidget(), Qt::Key_Space);
        QTest::keyClick(paying.window.focusWidget(), Qt::Key_Escape);
        QCOMPARE(paying.settled, 1);
        QCOMPARE(paying.change.size(), 1);
        QVERIFY(paying.window.isVisible());
        QApplication::setDoubleClickInterval(0); // as if the cashier had read it
        pressEnter(paying.window, true);
        QVERIFY(paying.window.isVisible());
        pressEnter(paying.window);
        QVERIFY(!paying.window.isVisible());
        QCOMPARE(paying.closed.size(), 1);
        QCOMPARE(paying.settled, 1);

        Paying other(counter, u"5.00"_s);
        button(other.window, u"btn_Exact"_s)->click();
        const QPoint place = button(other.window, u"btn_OK"_s)->geometry().center();
        QTest::mouseClick(button(other.window, u"btn_OK"_s), Qt::LeftButton);
        QWidget *below = other.window.childAt(place);
        QTest::mouseDClick(below ? below : &other.window, Qt::LeftButton);
        QCOMPARE(other.settled, 1);
        QVERIFY(other.window.isVisible());
    }

    void pressesDuringTheWaitAreForgotten()
    {
        Counter counter;
        Paying paying(counter, u"5.00"_s);
        paying.settling = [&] {
            QWidget *entry = paying.window.findChild<QLineEdit *>(u"txt_e"_s);
            QTest::mouseClick(button(paying.window, u"btn_Cancel"_s), Qt::LeftButton);
            QTest::mouseClick(button(paying.window, u"btn_OK"_s), Qt::LeftButton);
            button(paying.window, u"btn_OK"_s)->click();
            paying.window.close();
            key(paying.window, u"7<<"_s);
            pressEnter(paying.window);
            // What the system delivers only when the wait has ended:
            QCoreApplication::postEvent(entry, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
            QCoreApplication::postEvent(entry, new QKeyEvent(QEvent::KeyPress, Qt::Key_8, Qt::NoModifier, u"8"_s));
            return false;
        };
        key(paying.window, u"1000"_s);
        pressEnter(paying.window);
        QCoreApplication::processEvents();
        QCOMPARE(paying.settled, 1);
        QVERIFY(paying.window.isVisible() && paying.change.isEmpty());
        QCOMPARE(paying.shown(), u"10.00 / 5.00 / Change 5.00"_s);

        // An error is no sale either; then it goes through.
        counter.expect({u"error: Error while accessing database"_s});
        paying.settling = []() -> bool { throw std::runtime_error("gone"); };
        pressEnter(paying.window);
        QVERIFY(button(paying.window, u"btn_OK"_s)->isVisible());
        paying.settling = [] { return true; };
        pressEnter(paying.window);
        QCOMPARE(paying.settled, 3);
        QCOMPARE(paying.change.size(), 1);
    }

    void drawerErrorUndoesNothing()
    {
        Counter counter({u"error: Unknown Error"_s, u"error: Error while loading form"_s});
        counter.settings.drawerDevice = u"/dev/no such port"_s;
        Paying paying(counter, u"5.00"_s);
        key(paying.window, u"500"_s);
        pressEnter(paying.window);
        QVERIFY(counter.errorDescription().startsWith(u"Invalid Port Number"_s));
        QCOMPARE(paying.shown(), u"5.00 / .00 / Paid, no change"_s);
        QCOMPARE(text(paying.window, u"lbl_Drawer"_s), u"The drawer did not open: use its key."_s);
        QCOMPARE(paying.change.size(), 1);
        QVERIFY(button(paying.window, u"btn_Close"_s)->isEnabled());

        frm_DrawerOpen opening(counter);
        opening.show();
        QTRY_COMPARE(text(opening, u"lbl_Drawer"_s), u"The drawer did not open: use its key."_s);
        pressEnter(opening, true);
        QVERIFY(opening.isVisible());
        button(opening, u"Command1"_s)->click();
        QVERIFY(!opening.isVisible());
    }

    void quantityIsKeyed_data()
    {
        // Pad keys, then the keyboard's; the price shown; what OK does.
        drawnRows(uR"(
            pad            | 125 |      | 125   | 4,993.75 | accepted
            keyboard       |     | 12<3 | 13    | 519.35   | accepted
            both           | 1   | 0x   | 10    | 399.50   | accepted
            nothing        |     | <    |       |          | rejected
            zero           | 0   | 0    | 00    | 0.00     | rejected
            the most       |     | 32767 | 32767 | 1,309,041.65 | accepted
            more           |     | 32768 | 32768 | too many | error
            many           |     | 4006381 | 4006381 | too many | error
        )"_s);
    }

    void quantityIsKeyed()
    {
        const auto [pad, keyboard, number, price, outcome] = cells<5>();
        Counter counter(outcome == u"error" ? QStringList{u"error: Unknown Error"_s} : QStringList{});
        frm_Calculator calculator(counter, u"Bib & ball"_s, u"39.95"_s);
        calculator.show();
        for (const QChar digit : pad)
            QTest::mouseClick(button(calculator, u"lbl_Key_"_s + digit), Qt::LeftButton);
        key(calculator, keyboard);
        pressEnter(calculator, true);
        QVERIFY(calculator.isVisible());
        QCOMPARE(text(calculator, u"lbl_Number"_s), number);
        QCOMPARE(text(calculator, u"lbl_Price"_s), price);
        pressEnter(calculator);
        QCOMPARE(calculator.isVisible(), outcome == u"error");
        QCOMPARE(calculator.result() == QDialog::Accepted, outcome == u"accepted");
        QCOMPARE(calculator.quantity(), number);
    }

    void padTakesPointsAway()
    {
        Counter counter;
        frm_Calculator calculator(counter, u"Tea"_s, u"1.60"_s);
        calculator.findChild<QLabel *>(u"lbl_Number"_s)->setText(u"1.2"_s);
        button(calculator, u"lbl_Key_5"_s)->click();
        QCOMPARE(text(calculator, u"lbl_Number"_s), u"125"_s);
        const QSize size = button(calculator, u"lbl_Key_5"_s)->minimumSize();
        QVERIFY(size.width() >= 60 && size.height() >= 60);
    }

    void priceIsTyped_data()
    {
        drawnRows(uR"(
            whole      | 5     | 5.00
            cents      | 4.5   | 4.50
            rounded    | 1.005 | 1.01
            thousands  | 1,234.5 | 1234.50
            negative   | -3    | -3.00
            empty      |       | rejected
            a word     | five  | Type mismatch
            two points | 1.2.3 | Type mismatch
            blank      | ' '   | Type mismatch
            too large  | 1e9   | Overflow
        )"_s);
    }

    void priceIsTyped()
    {
        auto [typed, outcome] = cells<2>();
        const bool isError = outcome == u"Type mismatch" || outcome == u"Overflow";
        Counter counter(isError ? QStringList{u"error: Unknown Error"_s} : QStringList{});
        frm_MiscItem item(counter, u"Misc"_s);
        item.show();
        key(item, typed.remove(u'\''));
        button(item, u"txt_OK"_s)->click();
        QCOMPARE(item.isVisible(), isError);
        QCOMPARE(item.result() == QDialog::Accepted, !isError && outcome != u"rejected");
        QCOMPARE(item.price(), isError || outcome == u"rejected" ? QString() : outcome);
        QVERIFY(!isError || counter.errorDescription().startsWith(outcome));
    }

    void priceIsTouched()
    {
        Counter counter;
        frm_MiscItem item(counter, u"Misc"_s);
        item.show();
        for (const QString &name : {u"7"_s, u"Back"_s, u"1"_s, u"2"_s, u"Point"_s, u"5"_s})
            QTest::mouseClick(button(item, u"btn_Key_"_s + name), Qt::LeftButton);
        pressEnter(item);
        QCOMPARE(item.price(), u"12.50"_s);
    }
};

QTEST_MAIN(tst_Change)
#include "tst_Change.moc"
