#include "app/CounterTables.h"

#include "app/Errors.h"
#include "app/SqlText.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// One kind of per-counter table: how many counters have it, and the text that makes it.
struct TableKind
{
    QString baseName;
    int count = 0;
    QString definition = {};
};

void executeOrSkip(DbConnection &connection, const QString &sql)
{
    try {
        connection.execute(sql);
    } catch (const DbError &) {
        // What another counter made a moment ago, or this account may not make, is no reason not to start.
    }
}

QString definitionOf(DbConnection &connection, const QString &table)
{
    try {
        DbRows rows = connection.query(u"SHOW CREATE TABLE "_s + table + u";"_s);
        return rows.next() ? rows.text("Create Table") : QString();
    } catch (const DbError &) {
        return {};
    }
}

// A count grows only while the names arrive in the order 1, 2, 3, …: the server lists tbl_counter10 before
// tbl_counter2.
void countTables(DbConnection &connection, std::initializer_list<TableKind *> kinds)
{
    DbRows tables = connection.query(u"show tables;"_s);
    while (tables.next()) {
        const QString name = tables.text(0U);
        for (TableKind *kind : kinds)
            if (name == counterTable(kind->baseName, kind->count + 1))
                ++kind->count;
    }
}

void createMissing(DbConnection &connection, const TableKind &kind, int counterCount, bool withSystemRow)
{
    for (int counter = kind.count + 1; counter <= counterCount; ++counter) {
        const QString number = QString::number(counter);
        QString definition = kind.definition;
        executeOrSkip(connection, definition.replace(kind.baseName + u'1', kind.baseName + number));
        if (withSystemRow)
            executeOrSkip(connection, u"INSERT INTO tbl_system SET sys_counter="_s + number +
                                          u", sys_counteractive=1, sys_doclose=0"_s);
    }
}

void addFirstSystemRow(DbConnection &connection)
{
    try {
        if (connection.query(u"SELECT * from tbl_system;"_s).size() > 0)
            return;
    } catch (const DbError &) {
        return;
    }
    executeOrSkip(connection, u"INSERT INTO tbl_system SET sys_counter=1, sys_counteractive=1, sys_doclose=0"_s);
}

} // namespace

void CreateCounterTables(Database &database, Prompts &prompts, int counterCount)
{
    guarded(prompts, ErrorCode::LoadingForm, [&] {
        DbConnection connection(database);
        TableKind counters{u"tbl_counter"_s};
        TableKind shifts{u"tbl_shift"_s};
        TableKind clipboards{u"tbl_booking_clipboard"_s};
        countTables(connection, {&counters, &shifts, &clipboards});
        for (TableKind *kind : {&counters, &shifts, &clipboards})
            kind->definition = definitionOf(connection, kind->baseName + u'1');
        addFirstSystemRow(connection);
        createMissing(connection, counters, counterCount, true);
        createMissing(connection, shifts, counterCount, false);
        createMissing(connection, clipboards, counterCount, false);
    });
}

bool SpecialGroupTableExists(Database &database, int group)
{
    DbConnection connection(database);
    DbRows tables = connection.query(u"show tables;"_s);
    while (tables.next())
        if (tables.text("Tables_in_posdb") == u"tbl_specialgroup"_s + QString::number(group))
            return true;
    return false;
}
