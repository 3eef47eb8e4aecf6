#pragma once

#include <QString>

/// Who books, as the booker windows and the clipboards hand it on. Texts as typed, not yet quoted.
struct Booker
{
    QString name = {};
    QString organisation = {};
    QString telephone = {};
    QString rateType = {};

    bool operator==(const Booker &) const = default;
};
