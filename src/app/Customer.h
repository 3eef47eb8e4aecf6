#pragma once

#include <QString>

/// A customer of a register, as they were chosen there.
struct Customer
{
    QString rateType; ///< of the register: "member", "student", "specialgroup3"
    QString number;
    QString name;
    QString organisation;
    QString telephone;

    bool operator==(const Customer &) const = default;
};
