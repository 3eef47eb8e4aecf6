#include "counter/PaymentList.h"

#include "app/Conversions.h"
#include "app/Formats.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double mostMoney = 9'999'999'999.99; // the tables hold no more

QString moneyText(double amount)
{
    return formatNumber(amount, u"##0.00"_s);
}

double amountOf(const QString &text)
{
    return text.isEmpty() ? 0 : toDouble(text);
}

} // namespace

bool PaymentList::holds(const SlotKey &slot) const
{
    return std::any_of(m_lines.cbegin(), m_lines.cend(),
                       [&](const PaymentLine &line) { return line.hour && line.hour->slot == slot; });
}

void PaymentList::addHour(const BookedHour &hour, const SlotPrice &price)
{
    add({slotLineText(hour.slot), moneyText(price.price), plainNumber(price.quantity), moneyText(price.total), hour},
        price.total);
}

void PaymentList::addItem(const QString &name, const QString &unitPrice, const QString &quantity)
{
    const qint16 pieces = quantity.isEmpty() ? qint16(0) : toInt16(quantity);
    if (pieces == 0)
        return;
    const double price = toDouble(unitPrice);
    add({name, moneyText(price), QString::number(pieces), moneyText(pieces * price)}, pieces * price);
}

void PaymentList::addMisc(const QString &name, const QString &price)
{
    if (price.isEmpty())
        return;
    const double amount = toDouble(price);
    add({name, moneyText(amount), u"1"_s, moneyText(amount)}, amount);
}

void PaymentList::remove(std::size_t line)
{
    if (line >= m_lines.size())
        return;
    if (!m_total.isEmpty())
        m_total = totalWith(-toDouble(m_lines[line].total));
    m_lines.erase(m_lines.begin() + std::ptrdiff_t(line));
}

void PaymentList::add(PaymentLine line, double total)
{
    const QString sum = totalWith(total);
    m_lines.push_back(std::move(line));
    m_total = sum;
}

QString PaymentList::totalWith(double difference) const
{
    const double sum = amountOf(m_total) + difference;
    if (std::abs(sum) > mostMoney)
        throw ConversionError("Overflow");
    return moneyText(sum);
}
