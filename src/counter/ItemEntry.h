#pragma once

#include "counter/Store.h"

#include <QWidget>

#include <optional>

class Prompts;
class QLabel;
class QLineEdit;

/// The chosen item, the quantity that is typed for it, and what that costs.
class ItemEntry : public QWidget
{
    Q_OBJECT

public:
    explicit ItemEntry(Prompts &prompts, QWidget *parent = nullptr);

    void choose(const StoreItem &item);
    void setQuantity(const QString &quantity);
    void clear();
    /// The keys are typed into the quantity.
    [[nodiscard]] bool isTypedIn() const;

Q_SIGNALS:
    /// A click into the quantity of the chosen item, or Enter where only a price can be asked for.
    void padWanted(const StoreItem &item);
    /// Enter after a quantity.
    void quantityTyped(const QString &name, const QString &unitPrice, const QString &quantity);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showPrice();
    void takeOver();

    Prompts &m_prompts;
    std::optional<StoreItem> m_chosen;
    QLineEdit *m_name;
    QLineEdit *m_quantity;
    QLabel *m_price;
};
