#include "records/EntrySaving.h"

#include "app/Station.h"
#include "records/Registers.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = RegisterField::Kind;
using End = SavedEntry::End;

/// The first field that cannot be saved, after staff were told.
std::optional<std::size_t> faultyField(Station &station, const Register &records, const QStringList &values)
{
    for (std::size_t field = 0; field < records.fields.size(); ++field)
        if (const QString fault = faultOf(records.fields[field], values[qsizetype(field)]); !fault.isEmpty()) {
            station.prompts.refuse(fault);
            return field;
        }
    return std::nullopt;
}

bool agreesTo(Station &station, const QStringList &doubts)
{
    return doubts.isEmpty() || station.prompts.confirm(doubts.join(u'\n') + u"\n\nSave it all the same?"_s, u"Save"_s);
}

/// `yours` has their values where nothing was entered.
Answer askWhose(Station &station, const Register &records, const QStringList &before, const QStringList &theirs,
                const QStringList &yours)
{
    QString text = u"Somebody changed this %1 since you read it:\n"_s.arg(records.entry);
    for (std::size_t field = 0; field < records.fields.size(); ++field) {
        const QString &their = theirs[qsizetype(field)];
        const QString &your = yours[qsizetype(field)];
        if (their != your)
            text += u"\n%1: theirs \"%2\", yours \"%3\""_s.arg(records.fields[field].name, their, your);
        else if (their != before[qsizetype(field)])
            text += u"\n%1: \"%2\" now, and you left it alone"_s.arg(records.fields[field].name, their);
    }
    text += u"\n\nYes saves yours. No takes theirs and forgets yours. Cancel leaves all as it is."_s;
    return station.prompts.ask({text,
                                u"Changed meanwhile"_s,
                                MessageIcon::Warning,
                                {Answer::Yes, Answer::No, Answer::Cancel},
                                Answer::Cancel});
}

SavedEntry saveOver(Station &station, const Register &records, RegisterRow before, QStringList values)
{
    for (;;) {
        const SaveOutcome outcome = saveRow(station, records, before, values);
        if (outcome.end == SaveOutcome::End::Done)
            return {End::Saved, outcome.row};
        if (outcome.end == SaveOutcome::End::Gone) {
            const bool anew = station.prompts.confirm(
                u"Somebody deleted this %1 meanwhile.\n\nAdd it anew as you entered it?"_s.arg(records.entry),
                u"Deleted meanwhile"_s);
            return anew ? SavedEntry{End::Saved, addRow(station, records, values).row} : SavedEntry{};
        }
        for (qsizetype field = 0; field < values.size(); ++field)
            if (values[field] == before.values[field])
                values[field] = outcome.row.values[field];
        // Both may have entered the same.
        const Answer answer = outcome.row.values == values
                                  ? Answer::No
                                  : askWhose(station, records, before.values, outcome.row.values, values);
        if (answer == Answer::Cancel)
            return {};
        if (answer == Answer::No)
            return {End::Theirs, outcome.row};
        before = outcome.row;
    }
}

} // namespace

QString waitingGoods(const Register &records, const RegisterRow &before, const QStringList &values,
                     const ListsHolding &listsHolding)
{
    const QString &name = records.nameOf(before);
    bool isSame = values[qsizetype(records.name)] == name;
    for (std::size_t field = 0; field < records.fields.size(); ++field)
        if (records.fields[field].kind == Kind::Price)
            isSame =
                isSame && isSameValue(records.fields[field], values[qsizetype(field)], before.values[qsizetype(field)]);
    const QStringList lists = isSame || !listsHolding ? QStringList() : listsHolding(name);
    if (lists.isEmpty())
        return {};
    return u"%1 waits to be paid in: %2. What waits there keeps its old name and price."_s.arg(name,
                                                                                               lists.join(u", "_s));
}

SavedEntry saveEntry(Station &station, const Register &records, const std::optional<RegisterRow> &before,
                     QStringList values, const ListsHolding &listsHolding)
{
    for (std::size_t field = 0; field < records.fields.size(); ++field)
        if (records.fields[field].kind == Kind::Hours && values[qsizetype(field)].isEmpty())
            values[qsizetype(field)] = u"0"_s;
    if (const auto faulty = faultyField(station, records, values))
        return {End::Kept, {}, faulty};
    QStringList doubts = doubtsOf(station.database, records, before, values);
    if (before)
        if (const QString waiting = waitingGoods(records, *before, values, listsHolding); !waiting.isEmpty())
            doubts << waiting;
    if (!agreesTo(station, doubts))
        return {};
    return before ? saveOver(station, records, *before, values)
                  : SavedEntry{End::Saved, addRow(station, records, values).row};
}
