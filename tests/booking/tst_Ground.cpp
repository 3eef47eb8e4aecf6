#include "booking/Ground.h"

#include "support/Check.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString numbers(const std::vector<int> &fields)
{
    QStringList texts;
    for (const int field : fields)
        texts << QString::number(field);
    return texts.join(u' ');
}

} // namespace

/// What is sold is the ground: what takes it, and what just does not.
class tst_Ground : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fields_data()
    {
        // The pairs, and for each field what it has in common with which others, and the ground's number.
        drawnRows(uR"(
            apart            |                         | 0 | | -1
            whole            | 3&4; 3&5                | 3 | 4 5 | 3
            half             | 3&4; 3&5                | 4 | 3 | 3
            another          | 3&4; 3&5                | 6 | | -1
            part of a part   | 5&0; 0&1; 1&2           | 2 | 0 1 5 | 0
            whole of a whole | 5&0; 0&1; 1&2           | 5 | 0 1 2 | 0
            two wholes       | 1&2; 4&2; 4&3           | 1 | 2 4 | 1
            part of two      | 1&2; 4&2; 4&3           | 2 | 1 4 | 1
            part of one      | 1&2; 4&2; 4&3           | 3 | 4 | 1
            in a circle      | 6&7; 7&6                | 6 | 7 | 6
        )"_s);
    }

    void fields()
    {
        const auto [pairs, field, others, ground] = cells<4>();
        const SharedFields shared(testSettings({}, 1, listOf(pairs)));
        QCOMPARE(numbers(shared.onSameGround(field.toInt())), others);
        QCOMPARE(shared.ground(field.toInt()), ground.toInt());
    }

    void hours()
    {
        const WorkingHours hours{8, 2};
        QCOMPARE(hourBefore(u"08:00"_s, hours), QString());
        QCOMPARE(hourBefore(u"09:00"_s, hours), u"08:00"_s);
        QCOMPARE(hourBefore(u"01:00"_s, hours), u"24:00"_s);
        QCOMPARE(hourAfter(u"23:00"_s, hours), u"24:00"_s);
        QCOMPARE(hourAfter(u"24:00"_s, hours), u"01:00"_s);
        QCOMPARE(hourAfter(u"01:00"_s, hours), u"02:00"_s);
        QCOMPARE(hourAfter(u"02:00"_s, hours), QString());
        QCOMPARE(hourAfter(u"24:00"_s, {8, 0}), QString());
        QCOMPARE(hourAfter(u"05:00"_s, hours), QString());
    }

    void extraTime_data()
    {
        // What stands, what is done, and whether it is done.
        drawnRows(uR"(
            into the next hour      | book 18:00 8 A; extra 18:00 8 A   | book 19:00 8 B  | taken
            past midnight           | book 24:00 8 A; extra 24:00 8 A   | book 01:00 8 B  | taken
            into the last hour      | book 01:00 8 A; extra 01:00 8 A   | book 02:00 8 B  | taken
            of a half on the other  | book 18:00 4 A; extra 18:00 4 A   | book 19:00 5 B  | done
            pasting after it        | wait 18:00 7 W; cut; book 18:00 8 A; extra 18:00 8 A | paste 19:00 8 | taken
            pasting on the half     | wait 18:00 7 W; cut; book 18:00 3 A; extra 18:00 3 A | paste 19:00 5 | taken
            before a booking        | book 18:00 8 A; book 19:00 8 B    | extra 18:00 8 A | taken
            before the whole's      | book 18:00 4 A; book 19:00 3 B    | extra 18:00 4 A | taken
            before one past it      | book 24:00 3 A; book 01:00 4 B    | extra 24:00 3 A | taken
        )"_s);
    }

    void extraTime()
    {
        const auto [standing, deed, outcome] = cells<3>();
        m_server.freshDatabase();
        DeedCounter counter(m_server.connectionString());
        counter.actAll(standing);
        QCOMPARE(counter.act(deed), outcome == u"done" ? outcome : u"The field already being booked"_s);
        QCOMPARE(findings(m_server), QStringList());
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Ground)
#include "tst_Ground.moc"
