#include "counter/ItemQuantity.h"

#include "app/Conversions.h"
#include "app/Formats.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double mostPrice = 1e9;

} // namespace

QString numberAfterPad(const QString &shown, QChar digit)
{
    return QString(shown).remove(u'.') + digit;
}

bool sellsNothing(const QString &quantity)
{
    return quantity.isEmpty() || toInt16(quantity) == 0;
}

QString priceOfQuantity(const QString &quantity, const QString &unitPrice, const QString &pattern)
{
    return formatNumber(toInt16(quantity) * toDouble(unitPrice), pattern);
}

QString typedPrice(const QString &text)
{
    const double price = toDouble(text);
    if (std::abs(price) >= mostPrice)
        throw ConversionError("Overflow");
    return formatNumber(price, u"##0.00"_s);
}
