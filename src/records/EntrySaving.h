#pragma once

#include "records/Register.h"

#include <functional>
#include <optional>

struct Station;

/// What became of an entry that a person wanted to save.
struct SavedEntry
{
    enum class End {
        Saved,
        Kept,  ///< nothing was written, and what was entered stays as it is
        Theirs ///< nothing was written: what somebody else made of the entry is taken
    };

    End end = End::Kept;
    RegisterRow row = {};                   ///< as it stands in the table; not for Kept
    std::optional<std::size_t> faulty = {}; ///< the field that cannot be saved as it is
};

/// Gives the names of the payment lists that hold an item.
using ListsHolding = std::function<QStringList(const QString &itemName)>;

/// Tells what waits in payment lists under an item's old name or price; empty when nothing does.
QString waitingGoods(const Register &records, const RegisterRow &before, const QStringList &values,
                     const ListsHolding &listsHolding);

/// Saves an entry, after every question that stands before it: texts that the table cannot hold, numbers that somebody
/// has, goods that wait to be paid, and what others made of the entry since it was read as `before` (nothing for a new
/// one). Throws DbError and NotDone.
SavedEntry saveEntry(Station &station, const Register &records, const std::optional<RegisterRow> &before,
                     QStringList values, const ListsHolding &listsHolding = {});
