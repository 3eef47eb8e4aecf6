#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// What the words of the table stand for. N is the number behind the word, FIELD the deed's own field.
QMap<QString, QString> statements()
{
    const QString here = u"b_datetime='SLOT' AND b_field=FIELD"_s;
    const QString there = u"b_datetime='SLOT' AND b_field=N"_s;
    const QString nobody = u"INSERT INTO tbl_booking SET b_datetime='SLOT', b_bookertel='', b_bookerorg='', "_s;
    const auto remark = [](const QString &text, const QString &job, const QString &field, const QString &gap = u" "_s) {
        return u"INSERT INTO tbl_remark SET m_dotime='2026-11-14 14:59:59',"_s + gap +
               u"m_datetime='SLOT', m_remark='"_s + text + u"', m_job='"_s + job + u"' ,m_field="_s + field +
               u", m_staff='anna', m_actiontime='14 Nov 02:59:59 PM'"_s;
    };
    const QString shared = u" shared booking"_s;
    const QString partially = u" partially booked field N"_s;
    return {
        {u"look"_s, u"SELECT * FROM tbl_booking WHERE "_s + here},
        {u"book"_s, u"INSERT INTO tbl_booking SET b_datetime='SLOT', b_bookertel='5\\'5', b_bookerorg='it\\'s FC', "
                    "b_bookername='O\\'Neil', b_field=FIELD, b_specialrate='student'"_s},
        {u"booked"_s, remark(u" O\\'Neil 5\\'5"_s, u"book"_s, u"FIELD"_s, u"  "_s)},
        {u"clipboard"_s, u"SELECT * FROM tbl_waitlist_clipboard"_s},
        {u"listed"_s, u"SELECT * FROM tbl_waitlist where w_id='1'"_s},
        {u"unlist"_s, u"DELETE FROM tbl_waitlist where w_id='1'"_s},
        {u"share"_s, nobody + u"b_bookername='Shared Booking', b_field=N, b_specialrate=''"_s},
        {u"shared"_s, remark(shared, u"book"_s, u"N"_s)},
        {u"parent"_s, u"SELECT * FROM tbl_booking where "_s + there},
        {u"mark"_s,
         nobody + u"b_bookername= 'Partially Shared'  , b_shared= b_shared + 1, b_field=N, b_specialrate=''"_s},
        {u"raise"_s, u"UPDATE tbl_booking SET b_shared= b_shared + 1 where "_s + there},
        {u"raised"_s, remark(partially, u"book"_s, u"N"_s)},
        {u"delete"_s, u"DELETE FROM tbl_booking where b_datetime='SLOT' AND  b_field=FIELD"_s},
        {u"deleted"_s, remark(u"rain, it\\'s said"_s, u"cancel"_s, u"FIELD"_s)},
        {u"free"_s, u"DELETE FROM tbl_booking WHERE "_s + there},
        {u"freed"_s, remark(shared, u"cancel"_s, u"N"_s)},
        {u"lower"_s, u"UPDATE tbl_booking SET b_shared=b_shared - 1 where "_s + there},
        {u"lowered"_s, remark(partially, u"cancel"_s, u"N"_s)},
        {u"again"_s, u"SELECT * FROM tbl_booking WHERE b_datetime='SLOT'AND b_field=FIELD"_s},
        {u"extend"_s, u"UPDATE tbl_booking SET b_extratime=30 WHERE b_datetime='SLOT'AND b_field=FIELD"_s},
        {u"extended"_s, remark(u" for player adding 30 minutes more "_s, u"extra time"_s, u"FIELD"_s)},
        {u"shorten"_s, u"UPDATE tbl_booking SET b_extratime=0 WHERE b_datetime='SLOT'AND b_field=FIELD"_s},
        {u"shortened"_s, remark(u" do not want extratime."_s, u"delete extra time"_s, u"FIELD"_s)},
        {u"rate"_s, u"UPDATE tbl_booking SET b_specialrate='member' where b_datetime='SLOT' AND b_field=FIELD"_s},
        {u"rated"_s, remark(u" set member rate for O\\'Neil 24:00"_s, u"change rate"_s, u"FIELD"_s)},
    };
}

} // namespace

/// What each change of a slot sends, letter for letter, and in which order.
class tst_Statements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sent_data()
    {
        // What was done before, also behind the program's back; the deed and its statements.
        drawnRows(uR"(
            alone                      |                                 | book 18:00 7 O'Neil    | look; book; booked
            from the waiting list      | wait 18:00 7 O'Neil; cut        | paste 18:00 7          | clipboard; listed; look; book; unlist; booked
            partners                   |                                 | book 18:00 3 O'Neil    | look; book; booked; share 4; shared 4; share 5; shared 5
            parent, first              |                                 | book 18:00 5 O'Neil    | look; book; booked; parent 3; mark 3; raised 3
            parent, next               | book 18:00 4 A                  | book 18:00 5 O'Neil    | look; book; booked; parent 3; raise 3; raised 3
            parent with its own booker | INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_field=3, b_bookername='B' | book 18:00 5 O'Neil | look; book; booked; parent 3; mark 3; raised 3
            clear alone                | book 24:00 8 O'Neil             | clear 24:00 8 O'Neil   | look; delete; deleted
            clear with partners        | book 24:00 0 O'Neil             | clear 24:00 0 O'Neil   | look; delete; deleted; free 1; freed 1; free 2; freed 2
            clear the last part        | book 24:00 2 O'Neil             | clear 24:00 2 O'Neil   | look; delete; deleted; parent 0; free 0; lowered 0
            clear one of two parts     | book 24:00 1 A; book 24:00 2 O'Neil | clear 24:00 2 O'Neil | look; delete; deleted; parent 0; lower 0; lowered 0
            clear, no parent row       | book 24:00 2 O'Neil; DELETE FROM tbl_booking WHERE b_field=0 | clear 24:00 2 O'Neil | look; delete; deleted; parent 0; lower 0; lowered 0
            extra time                 | book 24:00 3 O'Neil             | extra 24:00 3 O'Neil   | again; extend; extended
            no extra time              | book 24:00 3 O'Neil; extra 24:00 3 O'Neil | noextra 24:00 3 O'Neil | shorten; shortened
            rate                       | book 24:00 3 O'Neil             | rate 24:00 3 O'Neil    | rate; rated
        )"_s);
    }

    void sent()
    {
        const auto [standing, deed, words] = cells<3>();
        m_server.freshDatabase();
        DeedCounter counter(m_server.connectionString());
        for (const QString &before : listOf(standing))
            before[0].isUpper() ? m_server.exec(before) : counter.actAll(before);
        QStringList wanted;
        for (const QString &word : listOf(words))
            wanted += statements()
                          .value(word.section(u' ', 0, 0))
                          .replace(u"=N"_s, u'=' + word.section(u' ', 1))
                          .replace(u"field N"_s, u"field "_s + word.section(u' ', 1))
                          .replace(u"SLOT"_s, u"2026-11-14 "_s + deed.section(u' ', 1, 1) + u":00"_s)
                          .replace(u"FIELD"_s, deed.section(u' ', 2, 2));
        m_server.startLog();
        QCOMPARE(counter.act(deed), u"done"_s);
        QCOMPARE(m_server.takeLog(), wanted);
        if (deed.startsWith(u"book")) { // taken now: the look is all that happens
            m_server.startLog();
            QCOMPARE(counter.act(deed), u"The field already being booked"_s);
            QCOMPARE(m_server.takeLog(), wanted.mid(0, 1));
        }
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
