#include "records/RegisterFile.h"

#include "app/Operation.h"
#include "app/Station.h"
#include "records/CsvText.h"
#include "records/Registers.h"

#include <QHash>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
const QString stock = u"Stock"_s;

using Deed = ImportLine::Deed;

std::optional<QString> decoded(QByteArray bytes)
{
    if (bytes.startsWith(byteOrderMark))
        bytes.remove(0, byteOrderMark.size());
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes + '\n'); // behind which no letter can be cut off
    if (decoder.hasError() || text.contains(QChar(0)))
        return std::nullopt;
    return text;
}

// As the database compares: whatever the letters' case, ids as numbers.
QString keyOf(const Register &records, const QString &number)
{
    bool isWhole = false;
    const int id = number.trimmed().toInt(&isWhole);
    return records.isOfItems() && isWhole ? QString::number(id) : number.trimmed().toCaseFolded();
}

class Importer
{
public:
    Importer(const Register &records, const std::vector<RegisterRow> &present, bool updates)
        : m_records(records), m_updates(updates)
    {
        for (const RegisterRow &row : present)
            m_present[keyOf(records, records.numberOf(row))].push_back(&row);
    }

    ImportPlan plan(const QByteArray &bytes)
    {
        const auto text = decoded(bytes);
        if (!text)
            return {u"The file is not UTF-8 text. Save it as \"CSV UTF-8\" in the spreadsheet."_s};
        std::vector<CsvLine> lines = readCsv(*text);
        if (lines.empty())
            return {u"The file is empty."_s};
        if (const int opened = lines.back().openQuote; opened > 0)
            return {
                u"The quote opened in line %1 is never closed, so nobody can tell where that line ends."_s.arg(opened)};
        ImportPlan plan;
        readHeading(lines.front(), plan);
        if (plan.fault.isEmpty()) {
            plan.lines.reserve(lines.size() - 1);
            for (auto line = lines.cbegin() + 1; line != lines.cend(); ++line)
                plan.lines.push_back(read(*line));
            if (m_records.isOfItems())
                remarkNames(plan);
        }
        return plan;
    }

private:
    void readHeading(const CsvLine &heading, ImportPlan &plan)
    {
        m_columns.assign(m_records.fields.size(), -1);
        m_width = heading.cells.size();
        for (qsizetype column = 0; column < m_width; ++column) {
            const QString name = heading.cells[column].trimmed();
            const auto field =
                std::find_if(m_records.fields.begin(), m_records.fields.end(), [&](const RegisterField &each) {
                    return !name.compare(each.name, Qt::CaseInsensitive) ||
                           !name.compare(each.column, Qt::CaseInsensitive);
                });
            if (field == m_records.fields.end())
                plan.ignored << name;
            else if (qsizetype &place = m_columns[std::size_t(field - m_records.fields.begin())]; place < 0)
                place = column;
            else
                plan.fault = u"Two columns are called %1."_s.arg(field->name);
        }
        if (m_columns[m_records.number] < 0 || m_columns[m_records.name] < 0)
            plan.fault = u"The first line must name the columns, at least \"Number\" and \"Name\"."_s;
    }

    ImportLine read(const CsvLine &csv)
    {
        ImportLine line{csv.line};
        line.values = m_records.blankValues();
        for (std::size_t field = 0; field < m_columns.size(); ++field)
            if (m_columns[field] >= 0 && m_columns[field] < csv.cells.size())
                line.values[qsizetype(field)] = fromSpreadsheet(csv.cells[m_columns[field]]);
        if (csv.isBroken)
            line.reason = u"Something stands behind a closing quote in this line."_s;
        else if (csv.cells.size() != m_width)
            line.reason = u"This line has %1 cells, the first line %2."_s.arg(csv.cells.size()).arg(m_width);
        else
            judge(line);
        return line;
    }

    void judge(ImportLine &line)
    {
        const QString key = keyOf(m_records, line.values[qsizetype(m_records.number)]);
        const std::vector<const RegisterRow *> same = m_present.value(key);
        if (!same.empty())
            line.before = *same.front();
        keepMissing(line);
        line.reason = faultOfValues(line.values);
        if (!line.reason.isEmpty())
            return;
        if (key.isEmpty()) {
            line.reason = u"The number is missing."_s;
        } else if (line.values[qsizetype(m_records.name)].isEmpty()) {
            line.reason = u"The name is missing."_s;
        } else if (const int first = m_lineOf.value(key); first != 0) {
            line.reason = u"Line %1 has the same number."_s.arg(first);
        } else if (same.size() > 1) {
            line.reason = u"%1 entries of the register have this number."_s.arg(same.size());
        } else {
            m_lineOf[key] = line.line;
            decide(line);
        }
    }

    /// An update keeps what the file has no column for, and always the hours, which sales count.
    void keepMissing(ImportLine &line) const
    {
        for (std::size_t field = 0; line.before && field < m_columns.size(); ++field)
            if (m_columns[field] < 0 || m_records.fields[field].kind == RegisterField::Kind::Hours)
                line.values[qsizetype(field)] = line.before->values[qsizetype(field)];
    }

    [[nodiscard]] QString faultOfValues(QStringList &values) const
    {
        for (std::size_t field = 0; field < m_records.fields.size(); ++field) {
            QString &value = values[qsizetype(field)];
            if (m_records.fields[field].kind != RegisterField::Kind::Text)
                value = value.trimmed();
            if (m_records.fields[field].kind == RegisterField::Kind::Hours && value.isEmpty())
                value = u"0"_s;
            if (QString fault = faultOf(m_records.fields[field], value); !fault.isEmpty())
                return fault;
        }
        return {};
    }

    void decide(ImportLine &line) const
    {
        if (!line.before) {
            line.deed = Deed::Add;
        } else if (isAsBefore(line)) {
            line.deed = Deed::Same;
        } else {
            line.deed = m_updates ? Deed::Update : Deed::Skip;
            if (!m_updates)
                line.reason = u"The register has this number."_s;
        }
    }

    [[nodiscard]] bool isAsBefore(const ImportLine &line) const
    {
        for (std::size_t field = 0; field < m_records.fields.size(); ++field)
            if (!isSameValue(m_records.fields[field], line.values[qsizetype(field)],
                             line.before->values[qsizetype(field)]))
                return false;
        return true;
    }

    /// Names are compared as they will be when all is written.
    void remarkNames(ImportPlan &plan) const
    {
        const auto isWritten = [](const ImportLine &line) {
            return line.deed == Deed::Add || line.deed == Deed::Update;
        };
        const auto folded = [&](const QStringList &values) {
            return values[qsizetype(m_records.name)].trimmed().toCaseFolded();
        };
        QHash<QString, QString> names; // by number
        for (auto same = m_present.cbegin(); same != m_present.cend(); ++same)
            names[same.key()] = folded(same.value().front()->values);
        for (const ImportLine &line : plan.lines)
            if (isWritten(line))
                names[keyOf(m_records, line.values[qsizetype(m_records.number)])] = folded(line.values);
        QHash<QString, int> bearers;
        for (const QString &name : std::as_const(names))
            ++bearers[name];
        for (ImportLine &line : plan.lines) {
            const QString &name = line.values[qsizetype(m_records.name)];
            if (isWritten(line) && !(line.before && m_records.nameOf(*line.before) == name))
                line.remark = doubtsOfItemName(name, bearers.value(folded(line.values)) > 1).join(u' ');
        }
    }

    const Register &m_records;
    const bool m_updates;
    QHash<QString, std::vector<const RegisterRow *>> m_present;
    QHash<QString, int> m_lineOf;     ///< where the file has a number first
    std::vector<qsizetype> m_columns; ///< by field, -1 for none
    qsizetype m_width = 0;
};

} // namespace

int ImportPlan::count(Deed deed) const
{
    return int(std::count_if(lines.begin(), lines.end(), [&](const ImportLine &line) { return line.deed == deed; }));
}

ImportPlan planImport(const Register &records, const std::vector<RegisterRow> &present, const QByteArray &bytes,
                      bool updates)
{
    return Importer(records, present, updates).plan(bytes);
}

bool importFile(Station &station, const Register &records, const QByteArray &bytes, bool updates,
                const ImportPlan &plan)
{
    Operation operation(station, u"The import into "_s + records.title);
    return operation.run([&] {
        if (planImport(records, holdRows(operation, records), bytes, updates) != plan)
            return false;
        // Updates first: the last of the rows that were added proves best that the operation stands.
        for (const ImportLine &line : plan.lines)
            if (line.deed == Deed::Update)
                updateRow(operation, records, line.before->id, line.values);
        for (const ImportLine &line : plan.lines)
            if (line.deed == Deed::Add)
                insertRow(operation, records, line.values);
        return true;
    });
}

QByteArray exportRegister(Station &station, const Register &records)
{
    QStringList heading;
    for (const RegisterField &field : records.fields)
        heading << field.name;
    QHash<QString, QString> stocks;
    if (records.isOfItems()) {
        heading << stock;
        DbConnection connection(station.database);
        DbRows rows = connection.query(u"SELECT i_id, i_currentstock FROM tbl_item"_s);
        while (rows.next())
            stocks.insert(rows.text("i_id"), rows.text("i_currentstock"));
    }
    QString text = csvLine(heading);
    const auto rows = GetRecord(station.database, records);
    for (const RegisterRow &row : rows)
        text += csvLine(records.isOfItems() ? row.values + QStringList{stocks.value(row.id)} : row.values);
    return byteOrderMark + text.toUtf8();
}
