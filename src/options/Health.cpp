#include "options/Health.h"

#include "app/SqlText.h"
#include "counter/CounterNumbers.h"
#include "counter/Invoice.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Lines = std::vector<HealthLine>;

constexpr int lastNumber = std::numeric_limits<qint16>::max();
constexpr int fewLeft = 2768; // from 30000 on the counters warn too
constexpr qint64 megabyte = qint64(1) << 20;
constexpr qint64 secondsNoticed = 30;
constexpr qint64 secondsTooMany = 300;
constexpr qint64 hoursOfFreshBackup = 36;
constexpr qint64 hoursOfOldBackup = qint64(24) * 7;

HealthState stateOf(bool isGood, HealthState otherwise = HealthState::Attention)
{
    return isGood ? HealthState::Good : otherwise;
}

/// A line that gives its advice only when it is not good.
HealthLine lineOf(HealthState state, const QString &subject, const QString &words, const QString &advice)
{
    return {state, subject, words, state == HealthState::Good ? QString() : advice};
}

HealthLine versionLine(const QString &version)
{
    static const QRegularExpression number(u"^(?:5\\.5\\.5-)?(\\d+)\\.(\\d+)"_s);
    const auto match = number.match(version);
    const int release = match.captured(1).toInt() * 1000 + match.captured(2).toInt();
    const bool isMariaDb = version.contains(u"MariaDB"_s, Qt::CaseInsensitive);
    return lineOf(
        stateOf(release >= (isMariaDb ? 10011 : 8000)), u"Server version"_s, version,
        u"Tamsora is made for MariaDB 10.11 or MySQL 8 or a newer one: have the server brought up to date."_s);
}

HealthLine flushLine(const QString &value)
{
    return lineOf(stateOf(value == u"1"), u"Sales and power failures"_s,
                  value == u"1" ? u"Every sale is on the disk before the counter goes on"_s
                                : u"The last second of sales is lost in a power failure"_s,
                  u"Set innodb_flush_log_at_trx_commit=1 in the server's settings."_s);
}

Lines serverLook(Station &station)
{
    DbConnection connection(station.database);
    QMap<QString, QString> value;
    DbRows rows = connection.query(
        u"SHOW GLOBAL VARIABLES WHERE Variable_name IN ('version', 'sql_mode', 'innodb_flush_log_at_trx_commit', "
        "'max_allowed_packet', 'character_set_server', 'wait_timeout', 'time_zone', 'system_time_zone')"_s);
    while (rows.next())
        value[rows.text(0U).toLower()] = rows.text(1U);
    DbRows session = connection.query(
        u"SHOW SESSION VARIABLES WHERE Variable_name IN ('sql_mode', 'tx_isolation', 'transaction_isolation', "
        "'wait_timeout')"_s);
    QMap<QString, QString> own;
    while (session.next())
        own[session.text(0U).toLower()] = session.text(1U);
    DbRows base = connection.query(u"SELECT @@character_set_database, @@collation_database"_s);
    const QString characters = base.next() ? base.text(0U) : QString();

    const QString zone = value[u"time_zone"_s];
    const QString isolation = own.value(u"transaction_isolation"_s, own.value(u"tx_isolation"_s));
    const qint64 packet = value[u"max_allowed_packet"_s].toLongLong();
    return {
        versionLine(value[u"version"_s]),
        flushLine(value[u"innodb_flush_log_at_trx_commit"_s]),
        lineOf(stateOf(own[u"sql_mode"_s].isEmpty(), HealthState::Bad), u"sql_mode"_s,
               u"This counter's sessions: "_s +
                   (own[u"sql_mode"_s].isEmpty() ? u"none, as it must be"_s : own[u"sql_mode"_s]),
               u"Something between counter and server changes the session: ask whoever looks after the server."_s),
        lineOf(stateOf(isolation == u"REPEATABLE-READ", HealthState::Bad), u"Isolation"_s, isolation,
               u"Something between counter and server changes the session: ask whoever looks after the server."_s),
        lineOf(stateOf(packet >= megabyte), u"max_allowed_packet"_s, sql(u"%1 MB"_s, packet / megabyte),
               u"Set max_allowed_packet=16M in the server's settings."_s),
        lineOf(stateOf(characters == u"utf8mb4"), u"Letters"_s,
               sql(u"posdb: %1, server: %2"_s, characters, value[u"character_set_server"_s]),
               u"Names in other alphabets may be lost. database/install brings the tables up to date."_s),
        {HealthState::Good, u"wait_timeout"_s,
         sql(u"%1 seconds for this counter, %2 for others"_s, own[u"wait_timeout"_s], value[u"wait_timeout"_s])},
        {HealthState::Good, u"Time zone"_s,
         zone == u"SYSTEM" ? sql(u"the server's own, %1"_s, value[u"system_time_zone"_s]) : zone},
    };
}

Lines tablesLook(Station &station)
{
    DbConnection connection(station.database);
    QStringList others;
    int ours = 0;
    DbRows tables = connection.query(u"SELECT table_name, engine FROM information_schema.tables WHERE "
                                     "table_schema=DATABASE() AND table_name LIKE 'tbl\\_%' ORDER BY table_name"_s);
    while (tables.next()) {
        ++ours;
        if (tables.text(1U).compare(u"InnoDB"_s, Qt::CaseInsensitive) != 0)
            others << tables.text(0U);
    }
    DbRows keys = connection.query(u"SELECT COUNT(*) FROM information_schema.statistics WHERE table_schema=DATABASE() "
                                   "AND table_name='tbl_booking' AND index_name='slot_of_one_booker'"_s);
    const bool isGuarded = keys.next() && keys.text(0U) != u"0";
    return {
        lineOf(stateOf(others.isEmpty(), HealthState::Bad), u"Tables"_s,
               others.isEmpty() ? sql(u"All %1 tables are InnoDB"_s, ours) : u"Not InnoDB: "_s + others.join(u", "_s),
               u"In these tables a sale or booking can stay half written. Run database/install: it changes them."_s),
        lineOf(stateOf(isGuarded, HealthState::Bad), u"One booker for each hour"_s,
               isGuarded ? u"The table of bookings sees to it by itself"_s
                         : u"The key slot_of_one_booker of tbl_booking is missing"_s,
               u"An hour could be sold twice. Run database/install: it adds the key, or says what is in the way."_s)};
}

QString durationInWords(qint64 seconds)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    if (seconds < 2 * minute)
        return sql(u"%1 seconds"_s, seconds);
    if (seconds < 2 * hour)
        return sql(u"%1 minutes"_s, seconds / minute);
    if (seconds < 2 * day)
        return sql(u"%1 hours"_s, seconds / hour);
    return sql(u"%1 days"_s, seconds / day);
}

Lines clockLook(Station &station)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(u"SELECT DATE_FORMAT(NOW(), '%Y-%m-%d %H:%i:%s')"_s);
    const QDateTime server = rows.next() ? QDateTime::fromString(rows.text(0U), u"yyyy-MM-dd HH:mm:ss"_s) : QDateTime();
    const QDateTime here = QDateTime::fromString(sqlDateTime(station.now()), u"yyyy-MM-dd HH:mm:ss"_s);
    const qint64 ahead = server.secsTo(here);
    const qint64 apart = std::abs(ahead);
    const HealthState state = apart < secondsNoticed   ? HealthState::Good
                              : apart < secondsTooMany ? HealthState::Attention
                                                       : HealthState::Bad;
    return {lineOf(state, u"Clocks"_s,
                   apart == 0 ? u"This counter and the server agree"_s
                              : sql(u"This counter is %1 %2 the server"_s, durationInWords(apart),
                                    ahead > 0 ? u"ahead of"_s : u"behind"_s),
                   u"Set the clocks, and the time zones, of this computer and of the server by the network."_s)};
}

HealthLine numbersLine(const QString &kind, int highest)
{
    const int left = std::max(0, lastNumber - highest);
    const HealthState state = left == 0         ? HealthState::Bad
                              : left <= fewLeft ? HealthState::Attention
                                                : HealthState::Good;
    return lineOf(state, kind,
                  left == 0 ? u"No number is left: nothing more can be given one"_s
                            : sql(u"%1 of %2 numbers are left"_s, left, lastNumber),
                  u"Have the sales of past years put away, so that the numbers begin anew; make a backup before."_s);
}

Lines numbersLook(Station &station)
{
    DbConnection connection(station.database);
    Lines lines{numbersLine(u"Invoice numbers"_s, GetMaxInvoiceNumber(connection))};
    for (int counter = 1; counter <= station.settings.CounterCount; ++counter) {
        lines.push_back(
            numbersLine(sql(u"Transactions, counter %1"_s, counter), highestTransactionNumber(connection, counter)));
        lines.push_back(
            numbersLine(sql(u"Receipts, counter %1"_s, counter), highestReceiptNumber(connection, counter)));
    }
    return lines;
}

// The backup writes a line into the log each time that it has restored and compared what it wrote.
Lines backupLook(Station &station)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(u"SELECT log_datetime, log_do FROM tbl_log WHERE log_counter=0 AND log_do LIKE "
                                   "'backup checked %' ORDER BY log_datetime DESC, log_id DESC LIMIT 1"_s);
    const QString advice = u"Run database/backup every night, and keep its files on another computer."_s;
    if (!rows.next())
        return {{HealthState::Bad, u"Backup"_s, u"There has never been a backup that was checked"_s, advice}};
    const QDateTime made = QDateTime::fromString(rows.text("log_datetime"), u"yyyy-MM-dd HH:mm:ss"_s);
    const QDateTime here = QDateTime::fromString(sqlDateTime(station.now()), u"yyyy-MM-dd HH:mm:ss"_s);
    const qint64 age = std::max<qint64>(0, made.secsTo(here));
    const HealthState state = !made.isValid() || age > hoursOfOldBackup * 3600 ? HealthState::Bad
                              : age > hoursOfFreshBackup * 3600                ? HealthState::Attention
                                                                               : HealthState::Good;
    return {lineOf(state, u"Backup"_s, sql(u"The newest is %1 old (%2)"_s, durationInWords(age), rows.text("log_do")),
                   advice)};
}

// The port is not opened: some drawers open by that alone, and the till may hold it.
Lines drawerLook(Station &station)
{
    const AppSettings &settings = station.settings;
    const QString subject = u"Cash drawer"_s;
    if (settings.drawerDevice == u"none")
        return {{HealthState::Good, subject, u"This counter has none"_s}};
    if (settings.drawerCommand.isEmpty())
        return {{HealthState::Attention, subject, u"No command is set that opens it"_s,
                 u"Enter it on the page of this counter, or say there that this counter has no drawer."_s}};
#ifdef Q_OS_WIN
    return {{HealthState::Good, subject, u"It is set up; the test button on the page of this counter opens it"_s}};
#else
    const QString device = settings.drawerDevice.isEmpty() ? u"/dev/ttyS"_s + QString::number(settings.drawerPort - 1)
                                                           : settings.drawerDevice;
    const bool isThere = QFileInfo(device).exists();
    return {lineOf(
        stateOf(isThere, HealthState::Bad), subject,
        device + (isThere ? u" is there; the test button on the page of this counter opens it"_s : u" is not there"_s),
        u"Is it plugged in? The page of this counter says at which port it is."_s)};
#endif
}

} // namespace

std::vector<HealthLook> healthLooks(Station &station)
{
    using Look = Lines (*)(Station &);
    const std::vector<std::pair<QString, Look>> looks{
        {u"the server"_s, &serverLook},        {u"the tables"_s, &tablesLook}, {u"the clocks"_s, &clockLook},
        {u"the numbers left"_s, &numbersLook}, {u"the backup"_s, &backupLook}, {u"the drawer"_s, &drawerLook}};
    std::vector<HealthLook> result;
    result.reserve(looks.size());
    for (const auto &[name, look] : looks)
        result.push_back({name, [&station, look = look] { return look(station); }});
    return result;
}
