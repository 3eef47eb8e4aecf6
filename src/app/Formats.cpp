#include "app/Formats.h"

#include <QLocale>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

struct Places
{
    qsizetype leastWhole = 0;
    qsizetype leastBroken = 0;
    qsizetype mostBroken = 0;
    bool grouped = false;
};

Places placesOf(const QString &pattern)
{
    const qsizetype point = pattern.indexOf(u'.');
    QString whole = pattern.left(point);
    const QString broken = point < 0 ? QString() : pattern.mid(point + 1);
    Places places;
    places.grouped = whole.contains(u',');
    whole.remove(u',');
    const qsizetype outermost = whole.indexOf(u'0');
    places.leastWhole = outermost < 0 ? 0 : whole.size() - outermost;
    places.leastBroken = broken.lastIndexOf(u'0') + 1;
    places.mostBroken = broken.size();
    return places;
}

struct Decimal
{
    QByteArray whole; // no leading zeros
    QByteArray broken;
};

// The 15 significant digits of a number that is not negative, rounded half up at the given decimal place.
Decimal roundedDecimal(double size, qsizetype brokenPlaces)
{
    const QByteArray scientific = QByteArray::number(size, 'e', 14); // d.dddddddddddddde+dd
    QByteArray digits = scientific.left(1) + scientific.mid(2, 14);
    qsizetype point = scientific.mid(17).toInt() + 1;
    if (point < 0) {
        digits.prepend(QByteArray(-point, '0'));
        point = 0;
    }
    const qsizetype kept = point + brokenPlaces;
    digits = digits.leftJustified(kept + 1, '0');
    const bool up = digits[kept] >= '5';
    digits.truncate(kept);
    digits.prepend('0');
    if (up) {
        qsizetype at = kept;
        for (; digits[at] == '9'; --at)
            digits[at] = '0';
        ++digits[at];
    }
    QByteArray whole = digits.left(point + 1);
    while (whole.startsWith('0'))
        whole.remove(0, 1);
    return {whole, digits.mid(point + 1)};
}

} // namespace

QString formatNumber(double value, const QString &pattern)
{
    if (!std::isfinite(value))
        return plainNumber(value);
    const Places places = placesOf(pattern);
    Decimal decimal = roundedDecimal(std::abs(value), places.mostBroken);
    const bool nothing = decimal.whole.isEmpty() && decimal.broken.count('0') == decimal.broken.size();
    decimal.whole = decimal.whole.rightJustified(places.leastWhole, '0');
    while (decimal.broken.size() > places.leastBroken && decimal.broken.endsWith('0'))
        decimal.broken.chop(1);
    if (places.grouped) {
        for (qsizetype at = decimal.whole.size() - 3; at > 0; at -= 3)
            decimal.whole.insert(at, ',');
    }
    const QByteArray sign = value < 0 && !nothing ? "-" : "";
    const QByteArray point = pattern.contains(u'.') ? "." : "";
    return QString::fromLatin1(sign + decimal.whole + point + decimal.broken);
}

QString formatTwoDigits(int value)
{
    const QString digits = QString::number(std::abs(value)).rightJustified(2, u'0');
    return value < 0 ? u'-' + digits : digits;
}

QString plainNumber(double value)
{
    return QString::number(value == 0 ? 0.0 : value, 'G', 15);
}

QString sqlDateTime(const QDateTime &moment)
{
    return QLocale::c().toString(moment, u"yyyy-MM-dd HH:mm:ss"_s);
}

QString sqlDate(const QDate &date)
{
    return QLocale::c().toString(date, u"yyyy-MM-dd"_s);
}

QString clockText(const QDateTime &moment)
{
    return QLocale::c().toString(moment, u"d MMM hh:mm:ss AP"_s);
}

QString weekdayName(const QDate &date)
{
    return QLocale::c().dayName(date.dayOfWeek(), QLocale::LongFormat);
}
