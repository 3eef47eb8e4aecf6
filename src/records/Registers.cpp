#include "records/Registers.h"

#include "app/Errors.h"
#include "app/Operation.h"
#include "app/SqlText.h"
#include "app/Station.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = RegisterField::Kind;

std::vector<RegisterRow> rowsOf(const Register &records, DbRows rows)
{
    const QByteArray id = records.idColumn.toLatin1();
    std::vector<QByteArray> columns;
    columns.reserve(records.fields.size());
    for (const RegisterField &field : records.fields)
        columns.push_back(field.column.toLatin1());
    std::vector<RegisterRow> found;
    found.reserve(std::size_t(rows.size()));
    while (rows.next()) {
        RegisterRow row{rows.text(id.constData()), {}};
        row.values.reserve(qsizetype(columns.size()));
        for (const QByteArray &column : columns)
            row.values << rows.text(column.constData());
        found.push_back(std::move(row));
    }
    return found;
}

QString listQuery(const Register &records, const QString &search, const QString &blanks, const QString &end)
{
    if (records.isOfItems())
        return u"SELECT * from tbl_item ORDER BY i_name ASC"_s + end;
    return sql(u"SELECT * from %1%2WHERE %3 LIKE '%%4%' ORDER BY %5 ASC%6"_s, records.table, blanks,
               records.fields[records.name].column, quoted(search), records.fields[records.number].column, end);
}

// The catalogue is asked for as a whole.
std::vector<RegisterRow> read(Database &database, const Register &records, const QString &search, const QString &query)
{
    DbConnection connection(database);
    std::vector<RegisterRow> rows = rowsOf(records, connection.query(query));
    if (records.isOfItems() && !search.isEmpty())
        std::erase_if(rows, [&](const RegisterRow &row) {
            const auto holds = [&](const QString &value) { return value.contains(search, Qt::CaseInsensitive); };
            return std::none_of(row.values.begin(), row.values.end() - 1, holds); // behind them the price
        });
    return rows;
}

QString assignment(const Register &records, std::size_t field, const QStringList &values)
{
    return sql(u"%1='%2'"_s, records.fields[field].column, quoted(values[qsizetype(field)]));
}

// A condition that only a row with just these values meets, whatever its columns take for equal.
QString sameRow(const Register &records, const QStringList &values)
{
    QStringList conditions;
    for (std::size_t field = 0; field < records.fields.size(); ++field)
        conditions << (records.fields[field].kind == Kind::Text
                           ? sql(u"CONVERT(%1 USING utf8mb4) COLLATE utf8mb4_bin='%2'"_s, records.fields[field].column,
                                 quoted(values[qsizetype(field)]))
                           : assignment(records, field, values));
    return conditions.join(u" AND "_s);
}

QString whereId(const Register &records, const QString &id)
{
    return sql(u"WHERE %1=%2"_s, records.idColumn, id);
}

/// The id of a row once it has the values: an item's is its number.
QString idAfter(const Register &records, const QString &id, const QStringList &values)
{
    return records.isOfItems() ? QString::number(values[qsizetype(records.number)].toInt()) : id;
}

/// The row as it stands now, held until the operation ends.
std::optional<RegisterRow> hold(Operation &operation, const Register &records, const QString &id)
{
    const auto rows =
        rowsOf(records, operation.query(sql(u"SELECT * from %1 %2 FOR UPDATE"_s, records.table, whereId(records, id))));
    return rows.empty() ? std::nullopt : std::optional(rows.front());
}

/// The row that was just written, with its values as the table holds them.
RegisterRow written(Operation &operation, const Register &records, const QString &id)
{
    const auto row = hold(operation, records, id);
    if (!row)
        throw NotDone(
            u"The database does not hold the %1 as it was entered. Nothing was written."_s.arg(records.entry));
    return *row;
}

/// Runs the operation; a number that the table takes only once is told in plain words.
void run(Operation &operation, const Register &records, const std::function<bool()> &work)
{
    try {
        operation.run(work);
    } catch (const DbError &error) {
        if (error.isDuplicateKey())
            throw NotDone(u"The database has another %1 with this number. Nothing was written."_s.arg(records.entry));
        throw;
    }
}

/// What a row should be by now that was `before` when `values` were entered: only hours that were left alone may
/// differ.
QStringList expectedNow(const Register &records, const RegisterRow &before, const RegisterRow &now,
                        const QStringList &values)
{
    QStringList expected = before.values;
    for (qsizetype field = 0; field < values.size(); ++field)
        if (records.fields[std::size_t(field)].kind == Kind::Hours && values[field] == before.values[field])
            expected[field] = now.values[field];
    return expected;
}

QString wordsFor(const Register &records, const QString &name)
{
    return u"The %1 %2"_s.arg(records.entry, name);
}

} // namespace

std::vector<RegisterRow> GetRecord(Database &database, const Register &records, const QString &search)
{
    return read(database, records, search, listQuery(records, search, u" "_s, {}));
}

std::vector<RegisterRow> readList(Database &database, const Register &records, const QString &search)
{
    return read(database, records, search, listQuery(records, search, records.listBlanks, records.listEnd));
}

QStringList doubtsOf(Database &database, const Register &records, const std::optional<RegisterRow> &before,
                     const QStringList &values)
{
    const auto othersWith = [&](std::size_t field) {
        DbConnection connection(database);
        auto rows = rowsOf(records, connection.query(sql(u"SELECT * from %1 WHERE %2"_s, records.table,
                                                         assignment(records, field, values))));
        std::erase_if(rows, [&](const RegisterRow &row) { return before && row.id == before->id; });
        return rows;
    };
    const auto isNew = [&](std::size_t field) {
        const QString &value = values[qsizetype(field)];
        return !value.isEmpty() && (!before || before->values[qsizetype(field)] != value);
    };
    QStringList doubts;
    if (values[qsizetype(records.name)].isEmpty())
        doubts << u"The name is empty."_s;
    if (isNew(records.number))
        if (const auto others = othersWith(records.number); !others.empty())
            doubts << u"The number %1 belongs to %2 already."_s.arg(records.numberOf(others.front()),
                                                                    records.nameOf(others.front()));
    if (!records.isOfItems() || !isNew(records.name))
        return doubts;
    return doubts + doubtsOfItemName(values[qsizetype(records.name)], !othersWith(records.name).empty());
}

QStringList doubtsOfItemName(const QString &name, bool isOfAnother)
{
    QStringList doubts;
    if (isOfAnother)
        doubts << u"Another item is called %1, too: a sale of one lowers the stock of both."_s.arg(name);
    if (name.contains(u'%') || name.contains(u'_'))
        doubts << u"A name with % or _ stands for others, too: a sale lowers the stock of every item that it fits."_s;
    return doubts;
}

QString insertRow(Operation &operation, const Register &records, const QStringList &values)
{
    QStringList assignments;
    for (std::size_t field = 0; field < records.fields.size(); ++field)
        assignments << assignment(records, field, values);
    const QString insert = sql(u"INSERT INTO %1%2SET %3"_s, records.table, records.blanks, assignments.join(u", "_s));
    if (records.isOfItems()) {
        operation.execute(insert);
        operation.proveBy(sql(u"SELECT %1 FROM %2 WHERE %3 LOCK IN SHARE MODE"_s, records.idColumn, records.table,
                              sameRow(records, values)));
        return idAfter(records, {}, values);
    }
    operation.insertProof(insert, records.table, records.idColumn, sameRow(records, values));
    return QString::number(operation.insertId());
}

void updateRow(Operation &operation, const Register &records, const QString &id, const QStringList &values)
{
    QStringList assignments;
    for (const std::size_t field : records.updated)
        assignments << assignment(records, field, values);
    operation.execute(sql(u"UPDATE %1%2SET %3%4 %5"_s, records.table, records.blanks,
                          records.isOfItems() ? u" "_s : QString(), assignments.join(u", "_s), whereId(records, id)));
    operation.proveBy(sql(u"SELECT %1 FROM %2 WHERE %1=%3 AND %4 LOCK IN SHARE MODE"_s, records.idColumn, records.table,
                          idAfter(records, id, values), sameRow(records, values)));
}

std::vector<RegisterRow> holdRows(Operation &operation, const Register &records)
{
    return rowsOf(records, operation.query(listQuery(records, {}, u" "_s, u" FOR UPDATE"_s)));
}

SaveOutcome addRow(Station &station, const Register &records, const QStringList &values)
{
    Operation operation(station, wordsFor(records, values[qsizetype(records.name)]));
    RegisterRow row;
    run(operation, records, [&] {
        row = written(operation, records, insertRow(operation, records, values));
        return true;
    });
    return {SaveOutcome::End::Done, row};
}

QStringList withPresentHours(const Register &records, const QStringList &before, const QStringList &now,
                             QStringList values)
{
    for (qsizetype field = 0; field < values.size(); ++field)
        if (records.fields[std::size_t(field)].kind == Kind::Hours && values[field] == before[field])
            values[field] = now[field];
    return values;
}

SaveOutcome saveRow(Station &station, const Register &records, const RegisterRow &before, const QStringList &values)
{
    Operation operation(station, wordsFor(records, records.nameOf(before)));
    SaveOutcome outcome;
    run(operation, records, [&] {
        const auto now = hold(operation, records, before.id);
        outcome = {now ? SaveOutcome::End::Changed : SaveOutcome::End::Gone, now.value_or(before)};
        if (!now || now->values != expectedNow(records, before, *now, values))
            return false;
        const QStringList wanted = withPresentHours(records, before.values, now->values, values);
        updateRow(operation, records, before.id, wanted);
        outcome = {SaveOutcome::End::Done, written(operation, records, idAfter(records, before.id, wanted))};
        return true;
    });
    return outcome;
}

SaveOutcome deleteRow(Station &station, const Register &records, const RegisterRow &before)
{
    Operation operation(station, u"The deletion of "_s + records.nameOf(before));
    SaveOutcome outcome;
    operation.run([&] {
        const auto now = hold(operation, records, before.id);
        outcome = {now ? SaveOutcome::End::Changed : SaveOutcome::End::Gone, now.value_or(before)};
        if (!now || now->values != expectedNow(records, before, *now, before.values))
            return false;
        operation.execute(sql(u"DELETE FROM %1%2%3"_s, records.table, records.blanks, whereId(records, before.id)));
        operation.proveBy(sql(u"SELECT 1 FROM DUAL WHERE NOT EXISTS (SELECT * FROM %1 %2 LOCK IN SHARE MODE)"_s,
                              records.table, whereId(records, before.id)));
        outcome.end = SaveOutcome::End::Done;
        return true;
    });
    return outcome;
}
