#pragma once

#include "app/BusinessDay.h"
#include "counter/SlotPrice.h"

#include <QString>

#include <optional>
#include <vector>

/// A booked hour on the payment list, as it stood when it was added.
struct BookedHour
{
    SlotKey slot;
    QString booker;
    QString rateType = {};
    int extraMinutes = 0;

    bool operator==(const BookedHour &) const = default;
};

/// What the customer is about to pay for: goods, or a booked hour.
struct PaymentLine
{
    QString text;     ///< the item's name, or "Field Number 7 14/11/2026 20:00"
    QString price;    ///< of one piece or hour, "##0.00"
    QString quantity; ///< "2", "1.5"
    QString total;    ///< "##0.00"
    std::optional<BookedHour> hour = {};

    bool operator==(const PaymentLine &) const = default;
};

/// The counter's basket. A change that cannot be computed throws ConversionError and leaves list and total.
class PaymentList
{
public:
    PaymentList() = default;
    /// A list that was kept: its lines, its total as text.
    PaymentList(std::vector<PaymentLine> lines, QString total) : m_lines(std::move(lines)), m_total(std::move(total)) {}

    [[nodiscard]] const std::vector<PaymentLine> &lines() const { return m_lines; }
    [[nodiscard]] bool isEmpty() const { return m_lines.empty(); }
    /// "##0.00"; empty until something was added.
    [[nodiscard]] const QString &total() const { return m_total; }
    [[nodiscard]] bool holds(const SlotKey &slot) const;

    void addHour(const BookedHour &hour, const SlotPrice &price);
    /// Pieces of an item; nothing for an empty quantity or 0. Price and quantity are texts as they were typed.
    void addItem(const QString &name, const QString &unitPrice, const QString &quantity);
    /// Something that has no fixed price; nothing for an empty price.
    void addMisc(const QString &name, const QString &price);
    void remove(std::size_t line);

    bool operator==(const PaymentList &) const = default;

private:
    void add(PaymentLine line, double total);
    [[nodiscard]] QString totalWith(double difference) const;

    std::vector<PaymentLine> m_lines;
    QString m_total;
};
