#include "Benchmark.h"

#include "Painted.h"
#include "ServedReports.h"
#include "StartedWindows.h"
#include "records/frm_Members.h"
#include "schedule/frm_Main.h"
#include "schedule/page_Booking.h"

#include <QLineEdit>
#include <QScreen>

#include <array>

using namespace Qt::StringLiterals;

double Benchmark::repainted(QWidget &window, const std::function<void()> &work)
{
    return milliseconds([&] {
        work();
        QCoreApplication::sendPostedEvents();
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &request);
    });
}

void Benchmark::compareRefresh()
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

void Benchmark::compareRegisters()
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

void Benchmark::compareReports()
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

void Benchmark::compareWindows()
{
    constexpr int starts = 9;
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
