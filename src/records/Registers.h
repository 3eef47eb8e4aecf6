#pragma once

#include "records/Register.h"

#include <optional>

class Database;
class Operation;
struct Station;

/// What is done with the rows of a register's table. Everything here throws DbError, and what writes throws NotDone,
/// too.

/// The customers whose name contains the text, by number; the items whose name, type or key contains it, by name. All
/// for an empty text.
std::vector<RegisterRow> GetRecord(Database &database, const Register &records, const QString &search = {});
/// The same, as the window's list asks for it.
std::vector<RegisterRow> readList(Database &database, const Register &records, const QString &search);

/// What a person should know before a row is saved as `values`: who has its number already, and what a sale makes of
/// an item's name. `before` is the row that is edited.
QStringList doubtsOf(Database &database, const Register &records, const std::optional<RegisterRow> &before,
                     const QStringList &values);
/// What a sale makes of an item's name.
QStringList doubtsOfItemName(const QString &name, bool isOfAnother);

struct SaveOutcome
{
    enum class End {
        Done,
        Changed, ///< nothing was written: the row is not what it was
        Gone     ///< nothing was written: there is no such row any more
    };

    End end = End::Done;
    RegisterRow row = {}; ///< as it stands in the table now
};

SaveOutcome addRow(Station &station, const Register &records, const QStringList &values);
/// Writes over a row that still is what it was `before`. Hours that were left alone keep what sales made of them
/// meanwhile.
SaveOutcome saveRow(Station &station, const Register &records, const RegisterRow &before, const QStringList &values);
SaveOutcome deleteRow(Station &station, const Register &records, const RegisterRow &before);

/// `values`, which were entered over a row that was `before` and is `now`: hours that were left alone are those of now.
QStringList withPresentHours(const Register &records, const QStringList &before, const QStringList &now,
                             QStringList values);

/// As a part of a larger operation. Gives the new row's id.
QString insertRow(Operation &operation, const Register &records, const QStringList &values);
void updateRow(Operation &operation, const Register &records, const QString &id, const QStringList &values);
/// All rows, held until the operation ends.
std::vector<RegisterRow> holdRows(Operation &operation, const Register &records);
