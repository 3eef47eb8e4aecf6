#pragma once

#include "options/CentreSettings.h"

#include <QWidget>

class Prompts;
class QComboBox;
class QLabel;
class QListWidget;
class QSpinBox;
class QTableWidget;

/// The part of the centre's page in which the fields, the working hours and the pairs that share their ground are
/// entered.
class FieldsPart : public QWidget
{
    Q_OBJECT

public:
    explicit FieldsPart(Prompts &prompts, QWidget *parent = nullptr);

    void load(const CentreSettings &settings);
    /// What is entered here; the rest stays.
    void enterInto(CentreSettings &settings) const;

Q_SIGNALS:
    void changed();
    /// A field was added, removed or renamed.
    void fieldsChanged();

private:
    QWidget *makeFields();
    QWidget *makeHoursAndPairs();
    [[nodiscard]] CentreSettings entered() const;
    void takeFields();
    void showHours();
    void showPairs();
    void addField();
    void removeField();
    void addPair();
    void removePair();
    void refuse(const QString &reason) const;

    Prompts &m_prompts;
    std::vector<CentreSettings::Pair> m_pairs;
    bool m_showing = false;
    QTableWidget *m_fields;
    QSpinBox *m_firstHour = nullptr;
    QSpinBox *m_lastHour = nullptr;
    QLabel *m_hours = nullptr;
    QListWidget *m_pairList;
    QComboBox *m_whole = nullptr;
    QComboBox *m_part = nullptr;
};
