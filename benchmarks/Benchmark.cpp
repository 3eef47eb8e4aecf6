#include "Benchmark.h"

#include "Bookings.h"
#include "app/Formats.h"
#include "app/Settings.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

Benchmark::Benchmark()
    : m_settings(settingsOfThisCounter()),
      m_options(ConnectionOptions::parse(m_settings.ConnectionString)),
      m_root(rootOptions(m_options)),
      m_bare(m_options),
      m_station(m_settings, m_prompts, &Benchmark::halfPastTwo)
{
    m_station.CurrentStaff = benchStaff;
    m_station.readClock();
}

void Benchmark::run(const QStringList &wanted)
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

QDateTime Benchmark::halfPastTwo()
{
    static const QDate today = QDate::currentDate();
    return {today, QTime(14, 30)};
}

void Benchmark::makeDatabase()
{
    qint64 count = 0;
    const double taken = milliseconds([&] { count = makeMillionBookings(m_root); });
    QTextStream(stderr) << count << " bookings made in " << QString::number(taken / 1000, 'f', 1) << " s" << Qt::endl;
    m_root.send("INSERT INTO tbl_staff SET st_access=2, st_login='" + benchStaff.toUtf8() + "', st_password='" +
                benchPassword.toUtf8() + "'");
    takeAwayBookings();
}

void Benchmark::takeAwayBookings()
{
    for (int week = 0; week < blockWeeks; ++week) {
        const QByteArray day = sqlDate(m_day.addDays(qint64(week) * 7)).toUtf8();
        m_root.sendAll({"DELETE FROM tbl_booking WHERE b_datetime LIKE '" + day +
                            "%' AND b_field <= " + QByteArray::number(plainCourt),
                        "DELETE FROM tbl_remark WHERE m_datetime LIKE '" + day + "%'"});
    }
}

QByteArrayList Benchmark::statementsOf(const std::function<void()> &work)
{
    const StatementLog log(m_root, m_options.user);
    work();
    return log.statements();
}

double Benchmark::round(const Operation &operation, const std::function<void()> &work)
{
    m_root.sendAll(operation.before);
    const double taken = milliseconds(work);
    takeAwayBookings();
    return taken;
}

QByteArrayList Benchmark::firstRound(const Operation &operation)
{
    QByteArrayList statements;
    round(operation, [&] { statements = statementsOf(operation.ours); });
    return statements;
}

void Benchmark::measure(const Operation &operation, const QByteArrayList &statements, int i, Comparison &comparison)
{
    // Who comes second finds the server's memory warmer.
    const auto bare = [&] { comparison.bare.push_back(round(operation, [&] { m_bare.sendAll(statements); })); };
    if (i % 2 == 1)
        bare();
    comparison.ours.push_back(round(operation, operation.ours));
    if (i % 2 == 0)
        bare();
}

QByteArrayList Benchmark::compare(const Operation &operation)
{
    Comparison comparison{operation.name};
    const QByteArrayList statements = firstRound(operation);
    for (int i = 0; i < operation.rounds; ++i)
        measure(operation, statements, i, comparison);
    comparison.print();
    return statements;
}
