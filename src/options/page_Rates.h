#pragma once

#include "options/OptionsPage.h"
#include "options/WeekRates.h"

class ElidedLabel;
class QBoxLayout;
class QComboBox;
class QLineEdit;
class QPushButton;
class RateGrid;

/// What an hour costs: a week of one field and rate type, painted with prices and saved all at once.
class page_Rates : public OptionsPage
{
    Q_OBJECT

public:
    page_Rates(Station &station, const QString &administrator, QWidget *parent = nullptr);

    void load() override;
    [[nodiscard]] bool hasChanges() const override;
    bool save() override;

private:
    QWidget *makeChoice();
    QWidget *makeTools();
    QPushButton *addButton(QBoxLayout *layout, const QString &name, const QString &caption, const QString &tip,
                           std::function<void()> action);
    QComboBox *addBox(QBoxLayout *layout, const QString &name, const QString &caption, const QStringList &entries);
    [[nodiscard]] RateKey chosenKey() const;
    /// Reads the prices of the chosen field and rate type, after a question when something is not saved.
    void changeKey();
    bool mayLeave();
    void read();
    /// False when another counter was first, which the person is told.
    bool write();
    /// Shows a week that is not saved yet.
    void show(const WeekRates &week);
    void showState();
    /// A typed price; nothing, and the person is told, when it is none.
    std::optional<double> priceOf(const QString &text);
    void paintChosen(const QString &text);
    void paintDrawn();
    void copyField();
    void copyDay();

    RateKey m_key;
    StoredRates m_stored;
    RateGrid *m_grid;
    QComboBox *m_field = nullptr;
    QComboBox *m_type = nullptr;
    QComboBox *m_from = nullptr;
    QComboBox *m_days = nullptr;
    QLineEdit *m_price = nullptr;
    QPushButton *m_settle = nullptr;
    ElidedLabel *m_chosen = nullptr;
    ElidedLabel *m_faults = nullptr;
};
