#include "support/Check.h"
#include "support/DrawnRows.h"
#include "support/RandomDeeds.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString taken = u"The field already being booked"_s;

/// Which fields lie on each other, in the simplest way.
class Ground
{
public:
    explicit Ground(const QStringList &pairs) : m_pairs(pairs) {}

    [[nodiscard]] bool isCommon(int one, int other) const
    {
        return contains(one, other) || contains(other, one) || std::ranges::any_of(m_pairs, [&](const QString &pair) {
                   const int part = pair.section(u'&', 1).toInt();
                   return contains(one, part) && contains(other, part);
               });
    }

private:
    [[nodiscard]] bool contains(int whole, int part, int depth = 6) const
    {
        return depth > 0 && std::ranges::any_of(m_pairs, [&](const QString &pair) {
                   const int half = pair.section(u'&', 1).toInt();
                   return pair.section(u'&', 0, 0).toInt() == whole &&
                          (half == part || contains(half, part, depth - 1));
               });
    }

    QStringList m_pairs;
};

} // namespace

/// Two counters do what comes into their heads to fields that share their ground. After each deed the tables are whole,
/// and nothing was refused but for somebody who stands there.
class tst_SharedFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomDeeds_data()
    {
        drawnRows(uR"(
            halves     | 0&1; 0&2; 3&4; 3&5           | 1
            more of it | 0&1; 0&2; 3&4; 3&5           | 2
            tangled    | 0&1; 1&2; 1&3; 4&2; 4&5; 5&0 | 3
            more of it | 0&1; 1&2; 1&3; 4&2; 4&5; 5&0 | 4
            two wholes | 1&2; 4&2; 4&3                | 5
            levels     | 5&0; 0&1; 1&2                | 6
        )"_s);
    }

    void randomDeeds()
    {
        const auto [listed, seed] = cells<2>();
        const QStringList pairs = listOf(listed);
        m_server.freshDatabase();
        m_server.exec(u"CREATE TABLE tbl_booking_clipboard2 LIKE tbl_booking_clipboard1"_s);
        const Ground ground(pairs);
        DeedCounter anna(m_server.connectionString(), 1, pairs);
        DeedCounter ben(m_server.connectionString(), 2, pairs);
        RandomDeeds annas(anna, seed.toUInt(), m_hours, 6);
        RandomDeeds bens(ben, 100 + seed.toUInt(), m_hours, 6);
        int done = 0;
        for (int i = 0; i < 120; ++i) {
            const QString deed = (i % 2 == 0 ? annas : bens).next();
            if (deed.isEmpty())
                continue;
            const bool isTaken = isGroundTaken(ground, deed);
            const QString words = (i % 2 == 0 ? anna : ben).act(deed);
            const QString what = deed.section(u' ', 0, 0);
            const QByteArray told = deed.toUtf8() + " -> " + words.toUtf8();
            if (what == u"book" || what == u"extra")
                QVERIFY2(words == (isTaken ? taken : u"done"_s), told);
            else if (what == u"paste")
                QVERIFY2(words == (isTaken ? taken : u"done"_s) || words == u"nothing", told);
            else
                QVERIFY2(words == u"done", told);
            if (words != u"done")
                continue;
            ++done;
            const QStringList faults = findings(m_server, pairs);
            QVERIFY2(faults.isEmpty(), told + ": " + faults.join(u"; "_s).toUtf8());
        }
        QVERIFY2(done > 50, "Nearly nothing was done: this shows nothing");
        for (const QString &booker :
             m_server.rows(u"SELECT CONCAT('clear ', SUBSTRING(b_datetime, 12, 5), ' ', "
                           "b_field, ' ', b_bookername) FROM tbl_booking WHERE b_exclusive=1"_s))
            QCOMPARE(anna.act(booker), u"done"_s);
        QCOMPARE(m_server.rows(u"SELECT * FROM tbl_booking"_s), QStringList());
    }

private:
    /// Whether somebody stands in the way of "book 18:00 3 …", "paste 18:00 3" or "extra 17:00 3 …".
    [[nodiscard]] bool isGroundTaken(const Ground &ground, const QString &deed) const
    {
        const bool isExtra = deed.startsWith(u"extra");
        const qsizetype index = m_hours.indexOf(deed.section(u' ', 1, 1)) + (isExtra ? 1 : 0);
        const int field = deed.section(u' ', 2, 2).toInt();
        for (const QString &line : m_server.rows(u"SELECT SUBSTRING(b_datetime, 12, 5), b_field, "
                                                 "IFNULL(b_exclusive, 0), b_extratime FROM tbl_booking"_s)) {
            const QStringList row = line.split(u'|');
            const bool isOwn = row[1].toInt() == field;
            const bool isCommon = isOwn || ground.isCommon(field, row[1].toInt());
            const bool isBooker = row[2] == u"1";
            if (m_hours.indexOf(row[0]) == index && (isOwn || (isCommon && isBooker)))
                return true;
            if (!isExtra && m_hours.indexOf(row[0]) == index - 1 && isCommon && row[3].toInt() > 0)
                return true;
        }
        return false;
    }

    const QStringList m_hours{u"22:00"_s, u"23:00"_s, u"24:00"_s, u"01:00"_s};
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_SharedFields)
#include "tst_SharedFields.moc"
