#include "app/Errors.h"
#include "options/StaffList.h"
#include "options/Stock.h"
#include "support/CuttingProxy.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"
#include "support/TwoStations.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

StaffMember memberOf(Database &database, const QString &login)
{
    for (const StaffMember &member : readStaff(database))
        if (member.login == login)
            return member;
    return {u"0"_s, login, AccessLevel::Staff, {}};
}

AccessLevel levelOf(const QString &word)
{
    return word == u"admin" ? AccessLevel::Admin : AccessLevel::Staff;
}

/// "add anna Pw1 Pw1 staff", "password mara New1 New1", "level mara admin", "remove mara", by boss.
QString changeStaff(Station &station, const QStringList &words)
{
    const QString administrator = u"boss"_s;
    if (words[0] == u"add")
        return addStaff(station, administrator, words[1], {words[2], words[3]}, levelOf(words[4]));
    const StaffMember member = memberOf(station.database, words[1]);
    if (words[0] == u"password")
        return setStaffPassword(station, administrator, member, {words[2], words[3]});
    if (words[0] == u"level")
        return setStaffLevel(station, administrator, member, levelOf(words[2]));
    if (words.size() > 2)
        station.CurrentStaff = words[1];
    return removeStaff(station, administrator, member);
}

} // namespace

/// Changes of the staff and of the stock, by one administrator and by two.
class tst_StaffAndStock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES ('boss', 'Secret1', 1), "
                      "('chief', 'Secret2', 1), ('mara', 'pass', 2), ('O\\'Neil', 'pass', 1), ('empty', '', 1);"
                      "INSERT INTO tbl_item (i_id, i_name, i_type, i_currentstock) VALUES (1, 'Cola', 'Drinks', 20), "
                      "(2, 'O\\'Neil\\'s 100% tea\\\\', 'Drinks', 5), (3, 'Bar', 'Food', 0)"_s);
    }

    void staffChanges_data()
    {
        // What is done before by hand, what boss does, and the line in the log, or how the refusal begins.
        drawnRows(uR"(
            added                |  | add anna Pw1 Pw1 staff | staff: added anna as staff
            added as admin       |  | add anna Pw1 Pw1 admin | staff: added anna as an administrator
            there already        |  | add mara Pw1 Pw1 staff | There is a staff member with the login mara already.
            case counts here     |  | add Mara Pw1 Pw1 staff | staff: added Mara as staff
            and elsewhere not    | ALTER TABLE tbl_staff CONVERT TO CHARACTER SET utf8mb4 COLLATE utf8mb4_general_ci | add Mara Pw1 Pw1 staff | There is a staff member with the login mara already.
            a sign in the login  |  | add an-na Pw1 Pw1 staff | A login is made of the letters A to Z and a to z and of digits. The login window leaves out everything else: of "an-na" it would make "anna".
            another alphabet     |  | add Ωmega Pw1 Pw1 staff | A login is made of
            a quote              |  | add x' Pw1 Pw1 staff    | A login is made of
            nothing left         |  | add - Pw1 Pw1 staff     | A login is made of the letters A to Z and a to z and of digits. The login window leaves out everything else: of "-" it would make nothing.
            a sign in the password |  | add anna Pw_1 Pw_1 staff | A password is made of
            not the same         |  | add anna Pw1 pw1 staff  | The two passwords are not the same.
            new password         |  | password mara New1 New1 | staff: new password for mara
            of somebody odd      |  | password O'Neil New1 New1 | staff: new password for O'Neil
            not a password       |  | password mara Né Né     | A password is made of
            promoted             |  | level mara admin        | staff: mara is an administrator now
            demoted              |  | level chief staff       | staff: chief is staff now
            demoted themselves   |  | level boss staff        | staff: boss is staff now
            nothing new          |  | level mara staff        | mara is staff already.
            the last who can log in | DELETE FROM tbl_staff WHERE st_login='chief' | level boss staff | boss is the only administrator who can log in.
            nobody any more      | UPDATE tbl_staff SET st_access=2 WHERE st_login='boss' | remove mara | boss is no administrator any more. Nothing was changed.
            one who cannot log in | DELETE FROM tbl_staff WHERE st_login='chief' | remove O'Neil | staff: removed O'Neil
            removed              |  | remove mara             | staff: removed mara
            oneself              |  | remove boss             | Nobody can remove themselves.
            who serves here      |  | remove chief serving    | chief is serving this counter.
            gone meanwhile       |  | remove ghost            | ghost is not in the list any more
        )"_s);
    }

    void staffChanges()
    {
        const auto [before, deed, wanted] = cells<3>();
        if (!before.isEmpty())
            m_server.exec(before);
        TestStation station(m_server);
        const QString all = u"SELECT st_login, st_password, st_access FROM tbl_staff ORDER BY st_id"_s;
        const QStringList standing = m_server.rows(all);
        const QString refusal = changeStaff(station, deed.split(u' '));
        const QStringList log =
            m_server.rows(u"SELECT log_counter, log_staffname, log_datetime, log_do FROM tbl_log"_s);
        if (wanted.startsWith(u"staff: ")) {
            QCOMPARE(refusal, QString());
            QCOMPARE(log, QStringList{u"1|boss|2026-11-14 14:59:59|"_s + wanted});
            QVERIFY(m_server.rows(all) != standing);
        } else {
            QVERIFY2(refusal.startsWith(wanted), qPrintable(refusal));
            QCOMPARE(log, QStringList());
            QCOMPARE(m_server.rows(all), standing);
        }
        if (deed.startsWith(u"add") && refusal.isEmpty()) // and this is how they log in
            QCOMPARE(m_server.rows(all).last().section(u'|', 0, 1), deed.section(u' ', 1, 2).replace(u' ', u'|'));
    }

    // Both have seen two administrators; with the guard off both go.
    void twoDemoteEachOther_data()
    {
        drawnRows(uR"(
            guarded     | InnoDB | 1
            without     | MyISAM | 0
        )"_s);
    }

    void twoDemoteEachOther()
    {
        const auto [engine, left] = cells<2>();
        m_server.exec(u"ALTER TABLE tbl_staff ENGINE="_s + engine);
        const auto demote = [](const QString &login) {
            return [login](Station &station) { return changeStaff(station, {u"level"_s, login, u"staff"_s}); };
        };
        const QStringList words =
            raceOfTwo(m_server, u"UPDATE tbl_staff SET st_access"_s, demote(u"chief"_s), demote(u"boss"_s));
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_staff WHERE st_access=1 AND st_login IN ('boss', 'chief')"_s),
                 QStringList{left});
        QCOMPARE(words[0], QString());
        QCOMPARE(words[1].isEmpty(), left == u"0");
    }

    void stockChanges_data()
    {
        // What is done, in pieces by item number; what was sold of Cola since the list was read; the reason; the stock
        // then, and the log's lines, or the refusal.
        drawnRows(uR"(
            delivery          | deliver 1:24 3:6 | 0  | Miller's    | 44 5 6  | stock: delivery Cola +24 (Miller's); stock: delivery Bar +6 (Miller's)
            while it is sold  | deliver 1:24     | 3  | Miller's    | 41 5 0  | stock: delivery Cola +24 (Miller's)
            an odd name       | deliver 2:1      | 0  | note 7      | 20 6 0  | stock: delivery O'Neil's 100% tea\ +1 (note 7)
            nothing delivered | deliver 1:0      | 0  | note 7      | 20 5 0  | Cola: a number from 1 to 1000000, please.
            too much          | deliver 1:1000001 | 0 | note 7      | 20 5 0  | Cola: a number from 1 to 1000000, please.
            one of two is gone | deliver 1:24 9:5 | 0 | note 7      | 20 5 0  | (9) was changed in the catalogue or is gone. Please look at the list again.
            no reason         | deliver 1:24     | 0  |             | 20 5 0  | Please enter where the goods come from, or why they were counted.
            no number         | deliver          | 0  | note 7      | 20 5 0  | Please enter a number of pieces for at least one item.
            longest reason    | deliver 1:1      | 0  | 229 x       | 21 5 0  | stock: delivery Cola +1 (229 x)
            reason too long   | deliver 1:1      | 0  | 230 x       | 20 5 0  | The reason is too long by 1 characters: it is kept in one line with "Cola".
            count             | count 1:18 3:0   | 0  | June        | 18 5 0  | stock: counted Cola 18, -2 (June); stock: counted Bar 0, +0 (June)
            while it is sold  | count 1:18       | 3  | June        | 17 5 0  | Cola 17
            told of the sale  | recount 1:18     | 3  | June        | 15 5 0  | stock: counted Cola 18, -2 (June)
            below nothing     | count 1:-1       | 0  | June        | 20 5 0  | Cola: a number from 0 to 1000000, please.
        )"_s);
    }

    void stockChanges()
    {
        const auto [deed, sold, reasonWords, stock, wanted] = cells<5>();
        const auto written = [](QString text) {
            return text.replace(u"229 x"_s, QString(229, u'x')).replace(u"230 x"_s, QString(230, u'x'));
        };
        TestStation station(m_server);
        const std::vector<StockItem> seen = readStock(station.database);
        std::vector<StockEntry> entries;
        for (const QString &word : deed.split(u' ').mid(1)) {
            const int id = word.section(u':', 0, 0).toInt();
            const auto item =
                std::find_if(seen.cbegin(), seen.cend(), [&](const StockItem &each) { return each.id == id; });
            entries.push_back(
                {item == seen.cend() ? StockItem{id, u"(9)"_s, {}, 0} : *item, word.section(u':', 1).toInt()});
        }
        m_server.exec(u"UPDATE tbl_item SET i_currentstock=i_currentstock-%1 WHERE i_name='Cola'"_s.arg(sold));
        const QString reason = written(reasonWords);
        QString found;
        if (deed.startsWith(u"deliver")) {
            found = deliver(station, u"boss"_s, entries, reason);
        } else {
            StockTake take = takeStock(station, u"boss"_s, entries, reason);
            if (deed.startsWith(u"recount"))
                take = takeStock(station, u"boss"_s, entries, reason, take.moved);
            found = take.refusal;
            for (const StockItem &item : take.moved)
                found += item.name + u' ' + QString::number(item.stock);
        }
        if (found.isEmpty())
            found =
                m_server.rows(u"SELECT log_do FROM tbl_log WHERE log_staffname='boss' ORDER BY log_id"_s).join(u"; "_s);
        else
            QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s), QStringList{u"0"_s});
        QCOMPARE(found, written(wanted));
        QCOMPARE(m_server.rows(u"SELECT GROUP_CONCAT(i_currentstock ORDER BY i_id SEPARATOR ' ') FROM tbl_item"_s),
                 QStringList{stock});
    }

    // The line in the log proves that a change stands whose answer was lost.
    void answerOfCommitIsLost()
    {
        for (const bool stands : {true, false}) {
            CuttingProxy proxy(m_server);
            const AppSettings settings = testSettings(proxy.connectionString());
            ScriptedPrompts person(stands ? QStringList{u"inform: The delivery was recorded, although the database's "
                                                        "answer was lost."_s}
                                          : QStringList());
            Station station(settings, person);
            const StockItem cola = readStock(station.database).front();
            proxy.cutAt(u"COMMIT"_s, stands ? CuttingProxy::Cut::Unanswered : CuttingProxy::Cut::Unsent);
            QString words;
            try {
                words = deliver(station, u"boss"_s, {{cola, 4}}, u"it's\\here"_s);
            } catch (const NotDone &reason) {
                words = QString::fromUtf8(reason.what());
            }
            QCOMPARE(words.contains(u"was not recorded"_s), !stands);
            QCOMPARE(
                m_server.rows(u"SELECT i_currentstock, (SELECT MAX(log_do) FROM tbl_log) FROM tbl_item WHERE i_id=1"_s),
                QStringList{u"24|stock: delivery Cola +4 (it's\\here)"_s});
        }
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_StaffAndStock)
#include "tst_StaffAndStock.moc"
