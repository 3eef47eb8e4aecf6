#pragma once

#include <QString>

#include <functional>
#include <vector>

class QComboBox;
class QLineEdit;
class QSpinBox;
class SettingsDraft;

/// A setting and the control in which it is entered.
struct BoundSetting
{
    QString section;
    QString key;
    QString name; ///< for the activity log, "database server"
    std::function<QString()> shown = {};
    std::function<void(const QString &value)> show = {};
    QString withoutIt = {}; ///< what holds while the file has none, and what is then shown
    bool isSecret = false;
    bool worksAtOnce = false; ///< it is read whenever it is needed, not only at the start
    QString loaded = {};      ///< what was shown when it was read
};

/// The settings of a page, and what was changed of them.
class BoundSettings
{
public:
    BoundSetting &add(BoundSetting setting) { return m_settings.emplace_back(std::move(setting)); }
    /// A secret is never shown nor logged.
    BoundSetting &addBox(QLineEdit *box, const QString &section, const QString &key, const QString &name,
                         const QString &withoutIt = {}, bool isSecret = false);
    /// Between the figure's limits; what is outside is shown at its limit and stays as it is until it is changed.
    BoundSetting &addFigure(QSpinBox *box, const QString &section, const QString &key, const QString &name,
                            const QString &withoutIt);
    /// Of a box whose items have the values as data; a value that is none of them is offered, too.
    BoundSetting &addChoice(QComboBox *box, const QString &section, const QString &key, const QString &name);

    void load();
    [[nodiscard]] bool hasChanges() const;
    [[nodiscard]] bool needRestart() const;
    /// Puts what was changed into a draft, with its lines for the log.
    void addTo(SettingsDraft &draft) const;

private:
    std::vector<BoundSetting> m_settings;
};
