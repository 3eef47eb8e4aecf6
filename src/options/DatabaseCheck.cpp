#include "options/DatabaseCheck.h"

#include "app/SqlText.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

// The script is in a library and left out of the program unless something asks for it. Qt's macro works outside
// namespaces only.
static void registerScript()
{
    Q_INIT_RESOURCE(options);
}

namespace {

QString script()
{
    registerScript();
    QFile file(u":/options/check.sql"_s);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("The program holds no check.sql");
    return QString::fromUtf8(file.readAll());
}

// "[[0,1],[0,2]]"
QString pairsOf(const AppSettings &settings)
{
    QStringList pairs;
    for (const QString &pair : settings.SharedFields) {
        if (pair.isEmpty())
            break;
        pairs << u'[' + QString(pair).replace(u'&', u',') + u']';
    }
    return u'[' + pairs.join(u',') + u']';
}

} // namespace

DatabaseCheck::DatabaseCheck(const AppSettings &settings) : m_settings(settings), m_database(settings.ConnectionString)
{
    m_database.setWaitSign(&m_patience);
}

int DatabaseCheck::begin()
{
    m_connection.emplace(m_database);
    splitScript(otherCounters());
    m_connection->execute(u"SET NAMES utf8mb4 COLLATE utf8mb4_bin"_s);
    m_connection->execute(
        sql(u"SET @pairs='%1', @last_hour=%2, @all_counters=1"_s, pairsOf(m_settings), int(m_settings.lastHour)));
    m_connection->execute(u"START TRANSACTION WITH CONSISTENT SNAPSHOT, READ ONLY"_s);
    return int(m_parts.size());
}

QString DatabaseCheck::otherCounters()
{
    static const QRegularExpression name(u"^tbl_counter([0-9]+)$"_s);
    QString others;
    DbRows tables = m_connection->query(u"SHOW TABLES"_s);
    while (tables.next()) {
        const auto match = name.match(tables.text(0U));
        if (match.hasMatch() && match.captured(1) != u"1")
            others += sql(u"UNION ALL SELECT %1, c_transaction, c_datetime, c_item, c_itemtotal, c_receipt FROM %2\n"_s,
                          match.captured(1), match.captured(0));
    }
    return others;
}

// What stands in the first column divides the script: its terms, the parts, and their order.
void DatabaseCheck::splitScript(const QString &otherCounters)
{
    QString text = script();
    text.replace(u"-- other counters\n"_s, otherCounters + u'\n');
    text = text.mid(text.indexOf(u"\nWITH "_s) + 1).section(u"\nORDER BY "_s, 0, 0);
    const qsizetype first = text.indexOf(u"\nSELECT "_s);
    m_terms = text.left(first);
    m_parts = text.mid(first).split(u"\nUNION ALL\n"_s);
}

std::vector<CheckFinding> DatabaseCheck::look(int part)
{
    DbRows rows = m_connection->query(m_terms + u'\n' + m_parts.at(part));
    std::vector<CheckFinding> findings;
    findings.reserve(std::size_t(rows.size()));
    while (rows.next()) {
        const QString field = rows.text(2U);
        findings.push_back({rows.text(0U), rows.text(1U).left(16), rows.text(3U),
                            field.isEmpty() ? std::nullopt : std::optional(field.toInt())});
    }
    return findings;
}

void DatabaseCheck::giveUp()
{
    m_patience.isOver = true;
    if (m_patience.end)
        m_patience.end();
}
