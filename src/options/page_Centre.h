#pragma once

#include "options/CentreSettings.h"
#include "options/OptionsPage.h"
#include "options/PlanSettings.h"

class FieldsPart;
class PlanPart;
class QBoxLayout;
class QPlainTextEdit;
class QSpinBox;

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
    QWidget *makeReceipts();
    QPlainTextEdit *addLines(QBoxLayout *column, const QString &caption, const QString &name, const QString &tip);
    QWidget *makeCopyLine();

    /// What the controls say.
    [[nodiscard]] CentreSettings entered() const;
    void showSettings(const CentreSettings &settings);
    void askForCopy();
    void told(const QString &refusal) const;

    CentreSettings m_loaded;
    FieldsPart *m_fields;
    QPlainTextEdit *m_address = nullptr;
    QPlainTextEdit *m_contact = nullptr;
    QSpinBox *m_counters = nullptr;
    QSpinBox *m_groups = nullptr;
    QSpinBox *m_copyFor = nullptr;
    PlanPart *m_plans;
};
