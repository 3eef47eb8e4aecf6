#pragma once

#include "app/Customer.h"

#include <QStringList>

#include <vector>

/// A column that staff enter.
struct RegisterField
{
    enum class Kind {
        Text,
        Hours, ///< a whole number from 0; counted up by sales, too
        Id,    ///< a whole number from 1 that is the row's id
        Price  ///< with a point and at most two decimals
    };

    QString column;
    QString name;    ///< "Telephone": heading of the list and of a file's column
    QString caption; ///< of the box, with its mnemonic
    QString box;     ///< name of the box without "txt_"
    int maxLength;
    Kind kind = Kind::Text;
};

/// One entry: its id and a text for each field, in the order of Register::fields.
struct RegisterRow
{
    QString id;
    QStringList values;

    bool operator==(const RegisterRow &) const = default;
};

/// A register of customers, or the catalogue: its table, and what differs in its statements.
struct Register
{
    enum class Kind { Customers, Items };

    Kind kind;
    QString title; ///< "Members"
    QString entry; ///< what one of them is called, "member"
    QString table;
    QString idColumn;
    std::vector<RegisterField> fields = {}; ///< in the order of INSERT
    std::vector<std::size_t> updated = {};  ///< the fields in the order of UPDATE
    std::vector<std::size_t> listed = {};   ///< the fields that the list shows
    std::size_t number = 0;                 ///< the field that tells the entries apart
    std::size_t name = 0;                   ///< the field that is searched
    QString blanks = QStringLiteral(" ");   ///< behind the table in what writes
    QString listBlanks = QStringLiteral(" ");
    QString listEnd = QStringLiteral(" ;");
    QString rateType = {}; ///< of a booking of its customers

    [[nodiscard]] bool isOfItems() const { return kind == Kind::Items; }
    /// What several of them are called, "members".
    [[nodiscard]] QString entries() const { return entry + u's'; }
    [[nodiscard]] const QString &numberOf(const RegisterRow &row) const { return row.values.at(qsizetype(number)); }
    [[nodiscard]] const QString &nameOf(const RegisterRow &row) const { return row.values.at(qsizetype(name)); }
    [[nodiscard]] Customer customer(const RegisterRow &row) const;
    /// What a box of an entry that is being added holds: hours begin at 0.
    [[nodiscard]] QStringList blankValues() const;
};

Register membersRegister();
Register studentsRegister();
/// The group's own table; groups count from 1.
Register groupRegister(int group);
Register catalogue();

/// Whether the table takes two texts of a field for one value: 3 and 3.00 for a price.
bool isSameValue(const RegisterField &field, const QString &one, const QString &other);

/// What is wrong with a field's text, in words for staff; empty when nothing is.
QString faultOf(const RegisterField &field, const QString &value);
