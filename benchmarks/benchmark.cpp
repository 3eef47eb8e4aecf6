// Measures the program against the least that could do the same work: the bare client library sending the same
// statements, an empty window. To be run by ./bench, at a sample centre that it may overwrite.

#include "BareClient.h"
#include "Bookings.h"
#include "Comparison.h"
#include "Painted.h"
#include "ServedReports.h"
#include "StartedWindows.h"
#include "app/Application.h"
#include "app/Formats.h"
#include "app/SqlText.h"
#include "booking/BlockBooking.h"
#include "booking/Booking.h"
#include "booking/Cancelling.h"
#include "counter/ReceiptPainter.h"
#include "counter/Settlement.h"
#include "counter/ShiftEnd.h"
#include "counter/TillActions.h"
#include "counter/frm_Change.h"
#include "counter/page_Counter.h"
#include "plan/Alerts.h"
#include "records/frm_Members.h"
#include "schedule/DaySchedule.h"
#include "schedule/frm_Main.h"
#include "schedule/page_Booking.h"

#include <QDialog>
#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QScopeGuard>
#include <QScreen>
#include <QTemporaryDir>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int field = 1; // a half of the pitch 0
constexpr int sharedPitch = 0;
constexpr int plainCourt = 6;
constexpr int weeks = 8;
constexpr int starts = 9;
const QString staff = u"bench"_s;
const QString password = u"bench2026"_s;

/// Confirms everything; a refusal or an error ends the measurements.
class Confirming : public Prompts
{
public:
    void refuse(const QString &text, const QString & /*title*/) override { fail(text); }
    void inform(const QString &text, const QString & /*title*/, MessageIcon /*icon*/) override { fail(text); }
    Answer ask(const Question &question) override { return question.buttons.front(); }
    QString askText(const QString &question, int /*maxLength*/, const QString & /*title*/) override { return question; }
    std::optional<Verification> verifyStaff(const QString & /*what*/) override
    {
        return Verification{staff, AccessLevel::Staff};
    }
    void showError(const QString &message, const QString &description) override
    {
        fail(message + u": "_s + description);
    }

private:
    [[noreturn]] static void fail(const QString &text) { throw std::runtime_error(text.toStdString()); }
};

AppSettings settingsOfThisCounter()
{
    AppSettings settings = loadStartupValues();
    LoadSettings(settings);
    return settings;
}

ConnectionOptions rootOptions(ConnectionOptions options)
{
    options.user = u"root"_s;
    options.password.clear();
    return options;
}

void require(bool ok, const char *what)
{
    if (!ok)
        throw std::runtime_error(what);
}

class Benchmark
{
public:
    Benchmark()
        : m_settings(settingsOfThisCounter()),
          m_options(ConnectionOptions::parse(m_settings.ConnectionString)),
          m_root(rootOptions(m_options)),
          m_bare(m_options),
          m_station(m_settings, m_prompts, &Benchmark::halfPastTwo)
    {
        m_station.CurrentStaff = staff;
        m_station.readClock();
    }

    /// All of "refresh", "operations", "till", "registers", "reports", "flushed" and "windows", or only the ones that
    /// are named.
    void run(const QStringList &wanted)
    {
        const auto isWanted = [&](const QString &part) { return wanted.isEmpty() || wanted.contains(part); };
        makeDatabase();
        QTextStream(stdout) << "name\tours\tbare\tratio" << Qt::endl;
        if (isWanted(u"refresh"_s))
            compareRefresh();
        if (isWanted(u"operations"_s))
            compareOperations();
        if (isWanted(u"till"_s))
            compareTill();
        if (isWanted(u"registers"_s))
            compareRegisters();
        if (isWanted(u"reports"_s))
            compareReports();
        if (isWanted(u"windows"_s))
            compareWindows();
        if (isWanted(u"flushed"_s))
            compareFlushed();
    }

private:
    /// Some work of the program. Before each round `before` is sent; after it all bookings of the days of
    /// the operations are taken away.
    struct Operation
    {
        QString name;
        int rounds;
        std::function<void()> ours;
        QByteArrayList before = {};
    };

    // An hour in which every counter is open.
    static QDateTime halfPastTwo()
    {
        static const QDate today = QDate::currentDate();
        return {today, QTime(14, 30)};
    }

    void makeDatabase()
    {
        qint64 count = 0;
        const double taken = milliseconds([&] { count = makeMillionBookings(m_root); });
        QTextStream(stderr) << count << " bookings made in " << QString::number(taken / 1000, 'f', 1) << " s"
                            << Qt::endl;
        m_root.send("INSERT INTO tbl_staff SET st_access=2, st_login='" + staff.toUtf8() + "', st_password='" +
                    password.toUtf8() + "'");
        takeAwayBookings();
    }

    void takeAwayBookings()
    {
        for (int week = 0; week < weeks; ++week) {
            const QByteArray day = sqlDate(m_day.addDays(qint64(week) * 7)).toUtf8();
            m_root.sendAll({"DELETE FROM tbl_booking WHERE b_datetime LIKE '" + day +
                                "%' AND b_field <= " + QByteArray::number(plainCourt),
                            "DELETE FROM tbl_remark WHERE m_datetime LIKE '" + day + "%'"});
        }
    }

    /// What the program sends for some work; the work is done.
    QByteArrayList statementsOf(const std::function<void()> &work)
    {
        const StatementLog log(m_root, m_options.user);
        work();
        return log.statements();
    }

    double round(const Operation &operation, const std::function<void()> &work)
    {
        m_root.sendAll(operation.before);
        const double taken = milliseconds(work);
        takeAwayBookings();
        return taken;
    }

    /// Warms everything up and gives the statements.
    QByteArrayList firstRound(const Operation &operation)
    {
        QByteArrayList statements;
        round(operation, [&] { statements = statementsOf(operation.ours); });
        return statements;
    }

    void measure(const Operation &operation, const QByteArrayList &statements, int i, Comparison &comparison)
    {
        // Who comes second finds the server's memory warmer.
        const auto bare = [&] { comparison.bare.push_back(round(operation, [&] { m_bare.sendAll(statements); })); };
        if (i % 2 == 1)
            bare();
        comparison.ours.push_back(round(operation, operation.ours));
        if (i % 2 == 0)
            bare();
    }

    /// Compares and prints; gives the statements.
    QByteArrayList compare(const Operation &operation)
    {
        Comparison comparison{operation.name};
        const QByteArrayList statements = firstRound(operation);
        for (int i = 0; i < operation.rounds; ++i)
            measure(operation, statements, i, comparison);
        comparison.print();
        return statements;
    }

    void compareOperations()
    {
        const QString day = sqlDate(m_day);
        const Booker booker{u"Harbour Team"_s, u"Harbour School"_s, u"0612345678"_s, {}};
        const QString hour = u"10:00"_s;
        const SlotKey slot{day, hour, field};
        const QByteArrayList booking = compare({u"doBooking"_s, 201, [&] {
                                                    const auto outcome = doBooking(m_station, staff, {slot, booker});
                                                    require(outcome == BookingOutcome::Booked, "doBooking refused");
                                                }});
        compare({u"doCancel"_s, 201,
                 [&] {
                     const auto outcome = doCancel(m_station, staff, {slot, booker.name, u"ill"_s}).outcome;
                     require(outcome == CancelOutcome::Cancelled, "doCancel refused");
                 },
                 booking});
        BookingClipboard clipboard;

        m_bare.sendAll(booking);
        DaySelection selection{day, field, readDay(m_station, day, field).rows, {2}, 2};
        require(copySlot(m_station, clipboard, selection), "The slot could not be copied");
        takeAwayBookings();
        selection.selected = {2, 3, 4};
        compare({u"block booking of 8 weeks x 3 hours"_s, 41, [&] {
                     std::vector<BlockBookingHour> results;
                     bookBlock(
                         m_station, clipboard, selection, weeks, [](int) {}, results);
                     require(results.size() == std::size_t(weeks) * 3, "The block is not whole");
                 }});

        m_settings.MaxFieldIndex = 15;
        Station largeCentre(m_settings, m_prompts, &Benchmark::halfPastTwo);
        std::vector<QString> captions;
        compare({u"RefreshAlert for 16 fields"_s, 201, [&] { RefreshAlert(largeCentre, captions); }});
    }

    /// Four hours and six goods, sold again and again.
    Operation sale(const QString &name, int rounds)
    {
        PaymentList list;
        Operation operation{name, rounds, {}};
        for (int hour = 10; hour < 14; ++hour) {
            const BookedHour booked{{sqlDate(m_day), QString::number(hour) + u":00"_s, plainCourt}, u"Harbour"_s};
            list.addHour(booked, {{}, 0, 40, 1, 40});
            operation.before
                << sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_field=%2, b_bookername='Harbour'"_s,
                       booked.slot.dateTimeText(), plainCourt)
                       .toUtf8();
        }
        for (int item = 1; item <= 6; ++item)
            list.addItem(u"Item "_s + QString::number(item), u"2.50"_s, u"2"_s);
        operation.ours = [this, list] { require(settle(m_station, list).transaction.has_value(), "The sale refused"); };
        return operation;
    }

    void makeItems(int count)
    {
        m_root.send("DELETE FROM tbl_item");
        m_root.send("INSERT INTO tbl_item (i_id, i_name, i_type, i_key, i_price, i_currentstock) SELECT seq, "
                    "CONCAT('Item ', seq), CONCAT('Type ', seq DIV 100), CONCAT('400', seq), 2.5, 20 FROM seq_1_to_" +
                    QByteArray::number(count));
    }

    void compareTill()
    {
        constexpr int fewItems = 1000;
        constexpr int manyItems = 5000;
        makeItems(fewItems);
        compare(sale(u"settle 4 hours and 6 goods"_s, 101));
        m_station.shiftName = u"morning"_s;
        compare({u"shift end with 1,000 items"_s, 41, [&] {
                     ShiftEnd(m_station).record({u"200"_s, u"300"_s, u"100"_s});
                 }});
        page_Counter page(m_station);
        page.resize(QGuiApplication::primaryScreen()->availableSize());
        page.show();
        awaitPainted([&] { return &page; });
        compare({u"RefreshStore with 1,000 items"_s, 41, [&] { page.RefreshStore(); }});
        comparePaintedLine(page, u"a line from key to picture, 1,000 items"_s);
        makeItems(manyItems);
        page.RefreshStore();
        comparePaintedLine(page, u"a line from key to picture, 5,000 items"_s);
        page.hide();
        compareDialog();
        comparePdf();
    }

    static double repainted(QWidget &window, const std::function<void()> &work)
    {
        return milliseconds([&] {
            work();
            QCoreApplication::sendPostedEvents();
            QEvent request(QEvent::UpdateRequest);
            QCoreApplication::sendEvent(&window, &request);
        });
    }

    /// Against painting the whole page once.
    static void comparePaintedLine(page_Counter &page, const QString &name)
    {
        constexpr int rounds = 41;
        constexpr double most = 30; // milliseconds
        Comparison comparison{name, 0, most};
        for (int i = 0; i < rounds; ++i) {
            comparison.ours.push_back(
                repainted(page, [&] { page.actions().addQuantity(u"Item 7"_s, u"2.50"_s, u"2"_s); }));
            comparison.bare.push_back(repainted(page, [&] { page.update(); }));
        }
        page.actions().reset();
        comparison.print();
    }

    /// From a typed letter to the painted list of all that it finds, against the statement alone.
    void compareRegisters()
    {
        constexpr int rounds = 21;
        constexpr double most = 100; // milliseconds
        constexpr int pause = 200;   // until the next letter is answered at once
        m_root.send("DELETE FROM tbl_member");
        m_root.send("INSERT INTO tbl_member (m_idno, m_name, m_org, m_tel) SELECT CONCAT('M', 1000000 + seq), "
                    "CONCAT('Harbour ', seq), 'Harbour School', '0612345678' FROM seq_1_to_20000");
        frm_Members window(m_station);
        window.show();
        awaitPainted([&] { return &window; });
        auto *search = window.findChild<QLineEdit *>(u"txt_SearchMemberName"_s);
        Comparison comparison{u"register search 20,000 rows"_s, 0, most};
        for (int i = 0; i < rounds; ++i) {
            QEventLoop rest;
            QTimer::singleShot(pause, &rest, &QEventLoop::quit);
            rest.exec();
            const QString text = i % 2 == 0 ? u"harb"_s : u"bour"_s;
            comparison.ours.push_back(repainted(window, [&] { search->setText(text); }));
            comparison.bare.push_back(milliseconds([&] {
                m_bare.sendAll(
                    {"SELECT * from tbl_member WHERE m_name LIKE '%" + text.toUtf8() + "%' ORDER BY m_idno ASC ;"});
            }));
        }
        comparison.print();
    }

    /// The window for the money against an empty dialog of its size.
    void compareDialog()
    {
        constexpr int rounds = 21;
        Comparison comparison{u"open the change dialog"_s, std::numeric_limits<double>::infinity()};
        for (int i = 0; i < rounds; ++i) {
            std::unique_ptr<QDialog> dialog;
            const auto shown = [&](const std::function<std::unique_ptr<QDialog>()> &make) {
                return milliseconds([&] {
                    dialog = make();
                    dialog->show();
                    awaitPainted([&] { return dialog.get(); });
                });
            };
            comparison.ours.push_back(
                shown([&] { return std::make_unique<frm_Change>(m_station, u"40.25"_s, frm_Change::Work{}); }));
            const QSize size = dialog->size();
            comparison.bare.push_back(shown([&] {
                auto empty = std::make_unique<QDialog>();
                empty->resize(size);
                return empty;
            }));
        }
        comparison.print();
    }

    /// Eleven lines on paper as a file against a page with nothing on it.
    static void comparePdf()
    {
        constexpr int rounds = 21;
        Receipt receipt{u"OFFICIAL RECEIPT"_s};
        for (int line = 1; line <= 11; ++line)
            receipt.lines.push_back(
                {QString::number(line), u"Field Number 7 14/11/2026 20:00"_s, u"40.00"_s, u"1"_s, u"40.00"_s});
        const QTemporaryDir folder;
        Comparison comparison{u"a receipt of 11 lines as PDF"_s, std::numeric_limits<double>::infinity()};
        for (int i = 0; i < rounds; ++i) {
            comparison.ours.push_back(milliseconds(
                [&] { require(savePdf(receipt, Paper::A5, folder.filePath(u"ours.pdf"_s)).isEmpty(), "No PDF"); }));
            comparison.bare.push_back(milliseconds([&] {
                QPdfWriter writer(folder.filePath(u"bare.pdf"_s));
                QPainter(&writer).drawText(100, 100, receipt.title);
            }));
        }
        comparison.print();
    }

    /// With a server that writes to the disk at every commit one operation is one commit, however many rows it has.
    void compareFlushed()
    {
        constexpr int rounds = 101;
        const QByteArray setting = "SET GLOBAL innodb_flush_log_at_trx_commit=";
        const QByteArray before = m_root.column("SELECT @@GLOBAL.innodb_flush_log_at_trx_commit").value(0);
        m_root.send(setting + '1');
        const auto back = qScopeGuard([&] { m_root.send(setting + before); });
        const auto bookOn = [&](int wanted) {
            return [this, wanted] {
                const Booker booker{u"Harbour Team"_s, u"Harbour School"_s, u"0612345678"_s, {}};
                const auto outcome = doBooking(m_station, staff, {{sqlDate(m_day), u"10:00"_s, wanted}, booker});
                require(outcome == BookingOutcome::Booked, "doBooking refused");
            };
        };
        Comparison plain{u"flushed: doBooking of a court"_s};
        Comparison shared{u"flushed: doBooking of a pitch with two halves"_s};
        const Operation ofCourt{plain.name, rounds, bookOn(plainCourt)};
        const Operation ofPitch{shared.name, rounds, bookOn(sharedPitch)};
        const QByteArrayList courtStatements = firstRound(ofCourt);
        const QByteArrayList pitchStatements = firstRound(ofPitch);
        for (int i = 0; i < rounds; ++i) {
            measure(ofCourt, courtStatements, i, plain);
            measure(ofPitch, pitchStatements, i, shared);
        }
        plain.print();
        shared.print();
        compare(sale(u"flushed: settle 4 hours and 6 goods"_s, 51));
        QTextStream(stdout) << "name\tshared\tplain\tratio" << Qt::endl;
        Comparison{u"flushed: a shared booking against a plain one"_s, 1.3, 0, shared.ours, plain.ours}.print();
    }

    void compareRefresh()
    {
        constexpr int rounds = 41;
        constexpr double painting = 4;
        frm_Main window(m_station);
        window.resize(window.screen()->availableGeometry().size());
        window.show();
        window.load();
        awaitPainted([&] { return &window; });
        auto *page = window.findChild<page_Booking *>();
        const auto paint = [&] {
            QCoreApplication::sendPostedEvents();
            QEvent request(QEvent::UpdateRequest);
            QCoreApplication::sendEvent(&window, &request);
        };
        // Two days in turn, so that there is something to paint.
        const auto chooseDay = [&](int round) { page->setDay(QDate::currentDate().addDays(round % 2)); };
        std::array<QByteArrayList, 2> statements;
        for (int day : {0, 1}) {
            chooseDay(day);
            statements.at(std::size_t(day)) = statementsOf([&] { page->RefreshView(); });
            paint();
        }
        Comparison whole{u"RefreshView"_s, 1.05, painting};
        Comparison unpainted{u"RefreshView without its painting"_s, 1.05};
        for (int i = 0; i < rounds; ++i) {
            chooseDay(i);
            paint();
            const auto bare = [&] {
                whole.bare.push_back(milliseconds([&] { m_bare.sendAll(statements.at(std::size_t(i % 2))); }));
            };
            if (i / 2 % 2 == 1)
                bare();
            const double read = milliseconds([&] { page->RefreshView(); });
            const double painted = milliseconds(paint);
            if (i / 2 % 2 == 0)
                bare();
            unpainted.ours.push_back(read);
            whole.ours.push_back(read + painted);
        }
        unpainted.bare = whole.bare;
        whole.print();
        unpainted.print();
    }

    /// Four visitors at the same time, against the bare statements of a page: 10 milliseconds a page are 100 pages a
    /// second.
    void compareReports()
    {
        constexpr int rounds = 21;
        constexpr int visitors = 4;
        constexpr int times = 10;
        constexpr double most = 10; // milliseconds
        const ServedReports served(m_settings);
        const QString path = u"/report/booking.asp?date="_s + sqlDate(m_day);
        served.visit(path, visitors, times); // every thread connects
        const QByteArrayList statements = statementsOf([&] { served.visit(path, 1, 1); });
        Comparison comparison{u"a page of the report server"_s, 0, most};
        for (int i = 0; i < rounds; ++i) {
            comparison.ours.push_back(milliseconds([&] { served.visit(path, visitors, times); }) / (visitors * times));
            comparison.bare.push_back(milliseconds([&] { m_bare.sendAll(statements); }));
        }
        comparison.print();
    }

    void compareWindows()
    {
        const QString folder = QCoreApplication::applicationDirPath();
        const auto program = [&] { return StartedWindows::run(folder + u"/tamsora_bench"_s, {u"--program"_s}, 2); };
        const auto empty = [&](const QStringList &sizes) {
            return StartedWindows::run(folder + u"/tamsora_empty_window"_s, sizes, int(sizes.size()));
        };
        QByteArrayList afterLogin = statementsOf([&] { program(); });
        while (!afterLogin.isEmpty() && !afterLogin.front().contains("tbl_staff"))
            afterLogin.removeFirst();
        Comparison start{u"start to login window"_s, 1.5};
        Comparison main{u"login to main window"_s, 2.0};
        Comparison memory{u"peak memory"_s, 1.5};
        for (int i = 0; i < starts; ++i) {
            const StartedWindows ours = program();
            const StartedWindows bare = empty({ours.firstSize, ours.secondSize});
            start.ours.push_back(ours.start);
            start.bare.push_back(bare.start);
            main.ours.push_back(ours.second);
            main.bare.push_back(bare.second + milliseconds([&] { m_bare.sendAll(afterLogin); }));
            memory.ours.push_back(ours.peakMemory);
            memory.bare.push_back(empty({ours.secondSize}).peakMemory);
        }
        start.print();
        main.print();
        memory.print();
    }

    AppSettings m_settings;
    ConnectionOptions m_options;
    BareClient m_root;
    BareClient m_bare;
    Confirming m_prompts;
    Station m_station;
    QDate m_day = QDate::currentDate().addDays(30);
};

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    if (Application::arguments().contains(u"--program"_s))
        return showProgram(staff, password);
    try {
        Benchmark().run(Application::arguments().mid(1));
    } catch (const std::exception &error) {
        QTextStream(stderr) << error.what() << Qt::endl;
        return 1;
    }
}
