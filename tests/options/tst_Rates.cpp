#include "booking/Rates.h"
#include "options/WeekRates.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"
#include "support/TwoStations.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const RateKey court{6, u"member"_s};
constexpr WorkingHours businessDay{8, 2};

} // namespace

/// A week's rates as they are painted: what is shown is what the till charges, and what is saved is what is shown.
class tst_Rates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_rate (r_day, r_field, r_special, r_timestart, r_timestop, r_rate) VALUES "
                      "('Monday', 6, '', 0, 23, 99), ('Monday', 5, 'member', 0, 23, 98)"_s);
    }

    void shownIsCharged_data()
    {
        // The rows of a court's member rate: day, first and last hour, price; then what is told of gaps and overlaps.
        drawnRows(uR"(
            nothing            | | Monday 08:00 to 03:00; Tuesday 08:00 to 03:00; Wednesday 08:00 to 03:00; Thursday 08:00 to 03:00; Friday 08:00 to 03:00; Saturday 08:00 to 03:00; Sunday 08:00 to 03:00 |
            whole week         | all 0 23 18 | |
            bands              | all 0 7 20; all 8 16 18; all 17 23 22.5 | |
            a gap at midnight  | all 8 23 18; all 1 7 20 | Monday 24:00 to 01:00; Tuesday 24:00 to 01:00; Wednesday 24:00 to 01:00; Thursday 24:00 to 01:00; Friday 24:00 to 01:00; Saturday 24:00 to 01:00; Sunday 24:00 to 01:00 |
            closed hours only  | all 0 2 9; all 8 23 9 | |
            overlap            | all 0 23 18; Friday 12 13 25 | | Friday 12:00 to 14:00: * is charged, * stands there too
            overlap that begins earlier | all 3 23 18; all 0 2 7; Sunday 10 24 11.11 | | Sunday 10:00 to 24:00: * is charged, * stands there too
            twice the same     | all 0 23 18; Tuesday 20 21 18 | | Tuesday 20:00 to 22:00: * is charged, * stands there too
            three prices       | all 0 23 18; Tuesday 20 20 1; Tuesday 20 20 2 | | Tuesday 20:00 to 21:00: * is charged, * stands there too
            never charged      | all 0 23 18; Montag 8 12 1; monday 12 8 2; all 24 30 3 | |
            written otherwise  | Tuesday 0 23 1; Wednesday 0 23 1; Thursday 0 23 1; Friday 0 23 1; Saturday 0 23 1; Sunday 0 23 1; MONDAY -3 23 4 | |
            free is a price    | all 0 23 0 | |
        )"_s);
    }

    void shownIsCharged()
    {
        const auto [rows, gaps, overlaps] = cells<3>();
        TestStation station(m_server);
        insert(rows);
        const StoredRates stored = StoredRates::read(station.database, court);
        QCOMPARE(chargedUnlike(station, stored.week), QStringList());
        QCOMPARE(gapsInWords(stored.week, businessDay), gaps);
        QCOMPARE(anyPrices(overlapsInWords(stored.week, businessDay)), overlaps);

        // Saved as it is, every hour costs the same, by one row, and the rest of the table is as it was.
        const QString others =
            u"SELECT r_day, r_field, r_special, r_timestart, r_timestop FROM tbl_rate WHERE r_field<>6 "
            "OR r_special<>'member' OR r_day='Montag' OR r_timestart>r_timestop"_s;
        const QStringList othersBefore = m_server.rows(others);
        QVERIFY(saveRates(station, u"boss"_s, court, stored, stored.week));
        QCOMPARE(chargedUnlike(station, stored.week), QStringList());
        const StoredRates saved = StoredRates::read(station.database, court);
        QCOMPARE(overlapsInWords(saved.week, businessDay), QString());
        QCOMPARE(saved.uselessRows(), stored.uselessRows());
        QCOMPARE(m_server.rows(others), othersBefore);
    }

    void writesFewRows_data()
    {
        // What stands, what is painted upon it, the statements by their first words, and the rows of the table.
        drawnRows(uR"(
            a first price    | | Monday 8 12 18 | INSERT 1 | Monday 8-12 18.00
            nothing new      | Monday 8 12 18 | Monday 9 10 18 | | Monday 8-12 18.00
            longer           | Monday 8 12 18 | Monday 13 16 18 | UPDATE 1 | Monday 8-16 18.00
            split            | Monday 8 12 18 | Monday 10 10 20 | UPDATE 1, INSERT 2 | Monday 8-9 18.00, Monday 10-10 20.00, Monday 11-12 18.00
            joined           | Monday 8 9 18; Monday 10 10 20; Monday 11 12 18 | Monday 10 10 18 | UPDATE 1, DELETE 2 | Monday 8-12 18.00
            side by side     | Monday 8 9 18; Monday 10 12 18 | | UPDATE 1, DELETE 1 | Monday 8-12 18.00
            taken away       | Monday 8 12 18 | Monday 8 12 none | DELETE 1 | NULL
            around midnight  | Monday 8 23 18 | Monday 24 24 18; Monday 1 2 18 | INSERT 1 | Monday 0-2 18.00, Monday 8-23 18.00
            another day      | Monday 8 12 18 | Monday 8 12 none; Sunday 8 12 18 | UPDATE 1 | Sunday 8-12 18.00
            over an overlap  | Monday 8 12 18; Monday 10 14 20 | Monday 8 14 21 | UPDATE 1, DELETE 1 | Monday 8-14 21.00
        )"_s);
    }

    void writesFewRows()
    {
        const auto [rows, painted, statements, table] = cells<4>();
        TestStation station(m_server);
        insert(rows);
        const StoredRates stored = StoredRates::read(station.database, court);
        const WeekRates week = paintedOn(stored.week, painted);
        m_server.startLog();
        QVERIFY(saveRates(station, u"boss"_s, court, stored, week));
        QStringList counts;
        const QStringList log = m_server.takeLog();
        for (const QString &verb : {u"UPDATE"_s, u"INSERT"_s, u"DELETE"_s}) {
            const auto count = std::count_if(log.cbegin(), log.cend(), [&](const QString &each) {
                return each.startsWith(verb) && each.contains(u"tbl_rate"_s);
            });
            if (count > 0)
                counts << verb + u' ' + QString::number(count);
        }
        QCOMPARE(counts.join(u", "_s), statements);
        QCOMPARE(
            m_server.rows(u"SELECT GROUP_CONCAT(r_day, ' ', r_timestart, '-', r_timestop, ' ', r_rate ORDER BY r_day, "
                          "r_timestart SEPARATOR ', ') FROM tbl_rate WHERE r_field=6 AND r_special='member'"_s),
            QStringList{table});
        QCOMPARE(chargedUnlike(station, week), QStringList());
    }

    void anyPaintingIsCharged()
    {
        TestStation station(m_server);
        QRandomGenerator random(20261114);
        for (int round = 0; round < 8; ++round) {
            const StoredRates stored = StoredRates::read(station.database, court);
            WeekRates week = stored.week;
            for (int stroke = 0; stroke < 40; ++stroke) {
                const int day = random.bounded(WeekRates::days);
                const int first = random.bounded(WeekRates::clockHours);
                const int price = random.bounded(4);
                for (int hour = first; hour < std::min(first + 5, int(WeekRates::clockHours)); ++hour)
                    week.setPrice(day, hour, price == 0 ? std::nullopt : std::optional(price * 4.5));
            }
            QVERIFY(saveRates(station, u"boss"_s, court, stored, week));
            QCOMPARE(chargedUnlike(station, week), QStringList());
            QVERIFY(StoredRates::read(station.database, court).week == week);
        }
    }

    // Both have read the same; the second is told. With the guard off the hours of both stand on each other.
    void twoPaint_data()
    {
        drawnRows(uR"(
            first prices      |                | InnoDB | saved; changed meanwhile |
            first, without    |                | MyISAM | saved; saved             | Monday 08:00 to 13:00: * is charged, * stands there too
            changed prices    | Monday 8 12 18 | InnoDB | saved; changed meanwhile |
        )"_s);
    }

    void twoPaint()
    {
        const auto [rows, engine, words, overlaps] = cells<4>();
        insert(rows);
        m_server.exec(u"ALTER TABLE tbl_rate ENGINE="_s + engine);
        TestStation own(m_server);
        const StoredRates stored = StoredRates::read(own.database, court);
        const auto paint = [&](const QString &price) {
            return [=](Station &station) {
                const WeekRates week = paintedOn(stored.week, u"Monday 8 12 "_s + price);
                return saveRates(station, u"boss"_s, court, stored, week) ? u"saved"_s : u"changed meanwhile"_s;
            };
        };
        const QString held = rows.isEmpty() ? u"INSERT INTO tbl_rate"_s : u"UPDATE tbl_rate"_s;
        QStringList said = raceOfTwo(m_server, held, paint(u"20"_s), paint(u"21"_s));
        // Without a row to hold both may begin to write, and the server sends one of them back.
        if (rows.isEmpty() && engine == u"InnoDB")
            std::sort(said.rbegin(), said.rend());
        QCOMPARE(said.join(u"; "_s), words);
        const WeekRates week = StoredRates::read(own.database, court).week;
        QCOMPARE(anyPrices(overlapsInWords(week, businessDay)), overlaps);
        QCOMPARE(chargedUnlike(own, week), QStringList());
    }

    void logTellsWhatChanged()
    {
        TestStation station(m_server);
        insert(u"Monday 8 12 18"_s);
        const StoredRates stored = StoredRates::read(station.database, court);
        QVERIFY(saveRates(station, u"O'Neil"_s, court, stored, paintedOn(stored.week, u"Monday 12 13 20.5"_s)));
        QCOMPARE(
            m_server.rows(u"SELECT log_staffname, log_do FROM tbl_log"_s),
            QStringList{
                u"O'Neil|rates: Field 7, member rate: 2 hours changed, the first Monday 12:00 from 18.00 to 20.50"_s});
    }

private:
    /// "Monday 8 12 18; all 17 23 22.5"
    void insert(const QString &rows) const
    {
        for (const QString &row : listOf(rows)) {
            const QStringList words = row.split(u' ');
            QStringList days{words[0]};
            if (words[0] == u"all") {
                days.clear();
                for (int day = 0; day < WeekRates::days; ++day)
                    days << rateDay(day);
            }
            for (const QString &day : std::as_const(days))
                m_server.exec(u"INSERT INTO tbl_rate SET r_field=6, r_special='member', r_day='%1', r_timestart=%2, "
                              "r_timestop=%3, r_rate=%4"_s.arg(day, words[1], words[2], words[3]));
        }
    }

    /// The same, with 24 for midnight and "none" for no price.
    static WeekRates paintedOn(WeekRates week, const QString &strokes)
    {
        for (const QString &stroke : listOf(strokes)) {
            const QStringList words = stroke.split(u' ');
            int day = 0;
            while (rateDay(day) != words[0])
                ++day;
            for (int hour = words[1].toInt(); hour <= words[2].toInt(); ++hour)
                week.setPrice(day, hour, words[3] == u"none" ? std::nullopt : std::optional(words[3].toDouble()));
        }
        return week;
    }

    /// The hours of the clock, and midnight as 24, for which the till charges something else than the week says.
    static QStringList chargedUnlike(Station &station, const WeekRates &week)
    {
        QStringList hours;
        for (int day = 0; day < WeekRates::days; ++day)
            for (int hour = 0; hour <= WeekRates::clockHours; ++hour)
                if (CalcFieldRate(station.database, qint16(court.field), qint16(hour), rateDay(day), court.rateType) !=
                    week.price(day, hour).value_or(0))
                    hours << rateDay(day) + u' ' + QString::number(hour);
        return hours;
    }

    // Which of two rows is found is the server's affair.
    static QString anyPrices(QString words)
    {
        static const QRegularExpression different(u"[0-9.]+ is charged, [0-9., ]+ stands"_s);
        return words.replace(different, u"* is charged, * stands"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Rates)
#include "tst_Rates.moc"
