#include "counter/AmountGiven.h"

#include "app/Conversions.h"
#include "app/Formats.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int backspace = 8;
constexpr qsizetype mostDigits = 10;
const QString pattern = u"##.#0"_s;

} // namespace

QString digitsAfterKey(const QString &digits, int code)
{
    if (code >= '0' && code <= '9')
        return digits + QChar(code);
    return code == backspace ? digits.chopped(std::min<qsizetype>(1, digits.size())) : digits;
}

QString amountOfDigits(const QString &digits)
{
    switch (digits.size()) {
    case 0:
        return u"00.00"_s;
    case 1:
        return u"00.0"_s + digits;
    case 2:
        return u"00."_s + digits;
    default:
        return digits.chopped(2) + u'.' + digits.right(2);
    }
}

QString digitsOfAmount(qint64 cents)
{
    return QString::number(std::max<qint64>(0, cents));
}

bool ChangeShown::isEnough() const
{
    return !change.isEmpty() && toDouble(change) >= 0;
}

ChangeShown changeOf(const QString &digits, const QString &total)
{
    if (digits.size() > mostDigits)
        return {amountOfDigits(digits), {}};
    const double given = toDouble(amountOfDigits(digits));
    const double due = total.isEmpty() ? 0 : toDouble(total);
    return {formatNumber(given, pattern), formatNumber(given - due, pattern)};
}

std::vector<qint64> amountsAbove(qint64 totalCents, const std::vector<qint64> &notes)
{
    std::vector<qint64> amounts;
    amounts.reserve(notes.size());
    for (const qint64 note : notes)
        amounts.push_back((std::max<qint64>(0, totalCents) + note - 1) / note * note);
    std::erase_if(amounts, [totalCents](qint64 amount) { return amount <= totalCents || amount == 0; });
    std::ranges::sort(amounts);
    amounts.erase(std::unique(amounts.begin(), amounts.end()), amounts.end());
    return amounts;
}

qint64 centsOf(const QString &amount)
{
    return amount.isEmpty() ? 0 : std::llround(100 * toDouble(amount));
}
