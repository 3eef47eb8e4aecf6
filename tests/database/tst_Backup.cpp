#include "support/DrawnRows.h"
#include "support/PrivateServer.h"
#include "support/Script.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// database/backup calls a file a backup only when it is one.
class tst_Backup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile sample(QStringLiteral(TAMSORA_DATABASE "/sample_centre.sql"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        m_server.exec(QString::fromUtf8(sample.readAll()));
        m_server.exec(u"INSERT INTO tbl_log SET log_do='tab\\tline\\nend\\\\ äöü€\\'', log_datetime=NULL"_s);
    }

    void makesOneThatCanBeRestored()
    {
        const QTemporaryDir folder;
        const QString account = folder.filePath(u"backup.cnf"_s);
        QCOMPARE(runScript(u"install"_s, server() + QStringList{u"--backup-account"_s, account}, "\n\n").code, 0);
        QCOMPARE(QFile::permissions(account) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        for (const QString &older : {u"posdb-2020-01-01-000000.sql.gz"_s, u"posdb-2020-01-02-000000.sql.gz"_s,
                                     u"posdb-2019-12-31-235959.sql.gz.part"_s, u"posdb-mine.sql.gz"_s})
            writeFile(folder.filePath(older), {});
        const ScriptEnd end =
            runScript(u"backup"_s, {u"--account"_s, account, u"--to"_s, folder.path(), u"--keep"_s, u"2"_s});
        QVERIFY2(end.code == 0, qPrintable(end.said));
        const QStringList files = QDir(folder.path()).entryList({u"posdb-*"_s}, QDir::Files, QDir::Name);
        QCOMPARE(files.size(), 3);
        QCOMPARE(files.first(), u"posdb-2020-01-02-000000.sql.gz"_s);
        QCOMPARE(files.last(), u"posdb-mine.sql.gz"_s);
        const QStringList notes = m_server.rows(u"SELECT log_counter, log_staffname, log_do FROM tbl_log WHERE "
                                                "log_datetime > NOW() - INTERVAL 1 HOUR AND log_do LIKE 'backup %'"_s);
        QCOMPARE(notes.size(), 1);
        QVERIFY(notes.first().startsWith(u"0|backup|backup checked "_s + files.at(1) + u", "_s));
        QCOMPARE(scratches(), QStringList());

        m_server.exec(u"CREATE DATABASE other"_s);
        QCOMPARE(QProcess::execute(u"bash"_s,
                                   {u"-c"_s, u"zcat '%1' | mariadb --no-defaults --socket='%2' -u root other"_s.arg(
                                                 folder.filePath(files.at(1)), m_server.socketPath())}),
                 0);
        // All but the row that the backup itself wrote.
        m_server.exec(
            u"DELETE FROM posdb.tbl_log WHERE log_do LIKE 'backup checked %'; DELETE FROM other.tbl_log WHERE log_do LIKE 'backup checked %'"_s);
        const QStringList tables = m_server.rows(u"SHOW TABLES FROM other"_s);
        QCOMPARE(tables, m_server.rows(u"SHOW TABLES FROM posdb"_s));
        for (const QString &table : tables) // what a counter copied last is not kept
            for (const QString &way :
                 {u"posdb.%1 EXCEPT ALL SELECT * FROM other.%1"_s, u"other.%1 EXCEPT ALL SELECT * FROM posdb.%1"_s})
                QCOMPARE(m_server.rows(u"SELECT * FROM "_s + way.arg(table)), QStringList());
        QVERIFY(m_server.rows(u"SELECT COUNT(*) FROM other.tbl_booking"_s).first().toInt() > 100);
        m_server.exec(u"DROP DATABASE other"_s);
    }

    void failures_data()
    {
        // What stands in for the dump program (D is the real one), what else is wrong, and what is said.
        drawnRows(uR"(
            cut off         | D "$@" [ head -c 30000                             |               | The dump has no end.
            ends early      | D "$@" [ head -c 30000; kill -9 $$                 |               | The dump failed
            a row less      | D "$@"; echo "DELETE FROM tbl_staff LIMIT 1; $END" |               | The restored tbl_staff is not the one that was dumped: its count of rows differs.
            another letter  | D "$@" [ sed s/Coffee/Toffee/                      |               | its sum differs.
            a key less      | D "$@"; echo "ALTER TABLE tbl_booking DROP KEY IF EXISTS invoice; $END" |    | its structure differs.
            a table less    | D "$@"; echo "DROP TABLE IF EXISTS tbl_shift1; $END"         |               | The restored tbl_shift1 is not the one
            no SQL          | echo "nonsense $END"                               |               | The dump cannot be restored
            full disk       | D "$@"                                             | ulimit -f 20; | File too large
            wrong password  | D "$@"                                             | account       | There is no new backup.
            no dump program | exit 127                                           |               | The dump failed
        )"_s);
    }

    void failures()
    {
        auto [program, trouble, wanted] = cells<3>();
        const QTemporaryDir folder;
        const QString dump = QStandardPaths::findExecutable(u"mariadb-dump"_s);
        QVERIFY(!dump.isEmpty());
        writeFile(folder.filePath(u"mariadb-dump"_s),
                  u"#!/bin/bash\nEND='-- Dump completed'\n"_s +
                      program.replace(u'[', u'|').replace(QRegularExpression(u"^D"_s), dump) + u"\n"_s);
        QStringList options = server() + QStringList{u"--to"_s, folder.path()};
        if (trouble == u"account"_s) {
            writeFile(folder.filePath(u"cnf"_s),
                      u"[client]\nuser=counter\npassword=wrong\nsocket="_s + m_server.socketPath());
            options = QStringList{u"--account"_s, folder.filePath(u"cnf"_s), u"--to"_s, folder.path()};
        }
        const QStringList log = m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s);
        const QString prefix =
            u"PATH='%1':$PATH; "_s.arg(folder.path()) + (trouble.startsWith(u"ulimit"_s) ? trouble : QString());
        const ScriptEnd end = runScript(u"backup"_s, options, "\n", prefix);
        QVERIFY2(end.code == 1 && (end.said.contains(wanted) || trouble == u"account"_s), qPrintable(end.said));
        QCOMPARE(QDir(folder.path()).entryList({u"posdb*"_s}, QDir::Files), QStringList());
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s), log);
        QCOMPARE(scratches(), QStringList());
    }

    void goesOnBesideACentreAtWork()
    {
        m_server.exec(u"CREATE USER writer@localhost; GRANT ALL ON posdb.* TO writer@localhost"_s);
        QProcess writer;
        writer.start(
            u"bash"_s,
            {u"-c"_s,
             u"for ((i = 0; ; i++)); do echo \"INSERT INTO tbl_remark SET m_remark='$i'; INSERT INTO tbl_counter1 SET "
             "c_item='$i'; UPDATE tbl_item SET i_currentstock = i_currentstock - 1; TRUNCATE tbl_booking_clipboard1; "
             "INSERT INTO tbl_booking_clipboard1 SET b_field = $i;\"; done | mariadb --no-defaults --socket='%1' -u writer posdb"_s
                 .arg(m_server.socketPath())});
        const QString rows = u"SELECT COUNT(*) FROM tbl_counter1 WHERE c_datetime IS NULL"_s;
        QTRY_VERIFY(m_server.rows(rows).first().toInt() > 10);
        const int before = m_server.rows(rows).first().toInt();
        const QTemporaryDir folder;
        const ScriptEnd end = runScript(u"backup"_s, server() + QStringList{u"--to"_s, folder.path()});
        const int after = m_server.rows(rows).first().toInt();
        m_server.exec(u"KILL USER writer"_s); // the loop that feeds its client ends with it
        writer.waitForFinished();
        QVERIFY2(end.code == 0, qPrintable(end.said));
        QVERIFY2(after > before + 10, "nobody wrote meanwhile");
    }

    void leavesNothingWhenItIsStopped()
    {
        const QTemporaryDir folder;
        const QStringList options = server() + QStringList{u"--to"_s, folder.path()};
        for (const QString &moment : {u"Dumping"_s, u"Restoring"_s}) {
            QVERIFY(stopScript(u"backup"_s, options, moment, false));
            QCOMPARE(scratches(), QStringList());
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
            // A kill leaves things, but none that looks like a backup, and the next one takes them away.
            QVERIFY(stopScript(u"backup"_s, options, moment, true));
            QCOMPARE(QDir(folder.path()).entryList({u"*.gz"_s}, QDir::Files), QStringList());
        }
        QCOMPARE(runScript(u"backup"_s, options).code, 0);
        QCOMPARE(scratches(), QStringList());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }

private:
    [[nodiscard]] QStringList server() const { return {u"--socket"_s, m_server.socketPath()}; }
    [[nodiscard]] QStringList scratches() const { return m_server.rows(u"SHOW DATABASES LIKE 'tamsora%'"_s); }

    static void writeFile(const QString &path, const QString &text)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            throw std::runtime_error("cannot write " + path.toStdString());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Backup)
#include "tst_Backup.moc"
