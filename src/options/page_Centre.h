#pragma once

#include "options/CentreSettings.h"
#include "options/OptionsPage.h"
#include "options/PlanSettings.h"

class PlanPart;
class QComboBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QSpinBox;
class QTableWidget;

/// What the whole centre has in common: its fields and hours, the pairs of fields that share their ground, the lines of
/// its receipts and its plans. Each counter has a settings file of its own, and the page says so.
class page_Centre : public OptionsPage
{
    Q_OBJECT

public:
    page_Centre(Station &station, const QString &administrator, QWidget *parent = nullptr);

    void load() override;
    [[nodiscard]] bool hasChanges() const override;
    bool save() override;

    /// Makes the file of another counter at this path; false when that could not be done, which the person was told.
    bool copyFor(int counter, const QString &path);

private:
    QWidget *makeFields();
    QWidget *makeFieldsTable();
    QWidget *makeHoursAndPairs();
    QWidget *makeReceipts();
    QPlainTextEdit *addLines(class QBoxLayout *column, const QString &caption, const QString &name, const QString &tip);
    QWidget *makeCopyLine();

    /// What the controls say.
    [[nodiscard]] CentreSettings entered() const;
    void showSettings(const CentreSettings &settings);
    void showPairs();
    void showHours();
    void addField();
    void removeField();
    void addPair();
    void removePair();
    void fieldsChanged();
    void askForCopy();
    void told(const QString &refusal) const;

    CentreSettings m_loaded;
    std::vector<CentreSettings::Pair> m_pairs;
    bool m_showing = false;
    QTableWidget *m_fields;
    QSpinBox *m_firstHour = nullptr;
    QSpinBox *m_lastHour = nullptr;
    QLabel *m_hours = nullptr;
    QListWidget *m_pairList;
    QComboBox *m_whole = nullptr;
    QComboBox *m_part = nullptr;
    QPlainTextEdit *m_address = nullptr;
    QPlainTextEdit *m_contact = nullptr;
    QSpinBox *m_counters = nullptr;
    QSpinBox *m_groups = nullptr;
    QSpinBox *m_copyFor = nullptr;
    PlanPart *m_plans;
};
