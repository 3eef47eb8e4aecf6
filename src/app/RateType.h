#pragma once

#include <QString>

/// The rate class of a booking, as its text stands in the tables: empty for normal, "member", "student", or
/// "specialgroup" and the group number.
namespace RateType {

inline const QString normal;
inline const QString member = QStringLiteral("member");
inline const QString student = QStringLiteral("student");

inline QString specialGroup(int group)
{
    return QStringLiteral("specialgroup") + QString::number(group);
}

/// The rate in words for the screen: "normal rate", "member rate", "special group 2 rate".
inline QString inWords(const QString &rateType)
{
    if (rateType.isEmpty())
        return QStringLiteral("normal rate");
    QString words = rateType;
    return words.replace(QLatin1String("specialgroup"), QLatin1String("special group ")) + QStringLiteral(" rate");
}

} // namespace RateType
