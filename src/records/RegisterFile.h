#pragma once

#include "records/Register.h"

#include <optional>

struct Station;

/// A register as a file for spreadsheets: UTF-8 text, a line for the columns' names and one for each entry.

/// What a line of such a file will do to the register.
struct ImportLine
{
    enum class Deed { Add, Update, Same, Skip, Wrong };

    int line = 0; ///< of the file, from 1
    Deed deed = Deed::Wrong;
    QStringList values = {};                ///< by field; of a line that is wrong what could be read
    QString reason = {};                    ///< why it is wrong or left out
    std::optional<RegisterRow> before = {}; ///< the entry with the same number
    QString remark = {};                    ///< what a person should know before it is written

    bool operator==(const ImportLine &) const = default;
};

struct ImportPlan
{
    QString fault = {};       ///< why nothing of the file can be taken; empty when something can
    QStringList ignored = {}; ///< columns that are not taken
    std::vector<ImportLine> lines = {};

    [[nodiscard]] int count(ImportLine::Deed deed) const;
    bool operator==(const ImportPlan &) const = default;
};

/// What becomes of the bytes of a file at a register that holds `present`. An entry whose number the register has is
/// updated, all but its hours, or left out.
ImportPlan planImport(const Register &records, const std::vector<RegisterRow> &present, const QByteArray &bytes,
                      bool updates);

/// Carries it out as one operation. False, with nothing written, when the register is by now another one than the plan
/// was made for. Throws DbError and NotDone.
bool importFile(Station &station, const Register &records, const QByteArray &bytes, bool updates,
                const ImportPlan &plan);

/// All entries of the register, and the stock of items beside them. Throws DbError.
QByteArray exportRegister(Station &station, const Register &records);
