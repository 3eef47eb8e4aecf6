#pragma once

#include "options/PlanSettings.h"

#include <QWidget>

#include <array>

class PlanEditor;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

/// The part of the centre's page in which its two plans are edited: the picture, where it stands, and the fields'
/// places.
class PlanPart : public QWidget
{
    Q_OBJECT

public:
    explicit PlanPart(QWidget *parent = nullptr);

    void load(const std::vector<QString> &fieldNames);
    /// The fields' names or number have changed; the places stay with their numbers.
    void setFields(const std::vector<QString> &fieldNames);
    [[nodiscard]] bool hasChanges() const;
    void addTo(SettingsDraft &draft) const;
    /// Takes a picture file: by its bare name where it lies in the program's folder. False when it is no picture.
    bool takePicture(const QString &file);

Q_SIGNALS:
    void changed();
    void refused(const QString &reason);

private:
    struct Plan
    {
        QString name; ///< in words
        PlanSettings loaded;
        PlanSettings now;
    };

    void addPicture(class QFormLayout *form);
    [[nodiscard]] Plan &shown();
    void showPlan();
    void showFields();
    void chooseField(int field);
    void choosePicture();
    void takePlacement();

    std::array<Plan, 2> m_plans;
    std::vector<QString> m_names;
    bool m_showing = false;
    PlanEditor *m_editor;
    QComboBox *m_plan = nullptr;
    QLineEdit *m_image = nullptr;
    std::array<QSpinBox *, 4> m_placement{}; ///< top, left, height, width
    QListWidget *m_fields;
    QLabel *m_place;
};
