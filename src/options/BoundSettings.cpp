#include "options/BoundSettings.h"

#include "app/Settings.h"
#include "options/SettingsDraft.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include <algorithm>

BoundSetting &BoundSettings::addBox(QLineEdit *box, const QString &section, const QString &key, const QString &name,
                                    const QString &withoutIt, bool isSecret)
{
    if (isSecret)
        box->setEchoMode(QLineEdit::Password);
    return add({section, key, name, [box] { return box->text(); }, [box](const QString &value) { box->setText(value); },
                withoutIt, isSecret});
}

BoundSetting &BoundSettings::addFigure(QSpinBox *box, const QString &section, const QString &key, const QString &name,
                                       const QString &withoutIt)
{
    return add({section, key, name, [box] { return QString::number(box->value()); },
                [box](const QString &value) { box->setValue(value.toInt()); }, withoutIt});
}

BoundSetting &BoundSettings::addChoice(QComboBox *box, const QString &section, const QString &key, const QString &name)
{
    return add({section, key, name, [box] { return box->currentData().toString(); },
                [box](const QString &value) {
                    if (box->findData(value) < 0)
                        box->addItem(value, value);
                    box->setCurrentIndex(box->findData(value));
                }});
}

void BoundSettings::load()
{
    for (BoundSetting &setting : m_settings) {
        const QString value = ReadSetting(setting.section, setting.key, {});
        setting.show(value.isEmpty() ? setting.withoutIt : value);
        setting.loaded = setting.shown();
    }
}

bool BoundSettings::hasChanges() const
{
    return std::ranges::any_of(m_settings, [](const BoundSetting &s) { return s.shown() != s.loaded; });
}

bool BoundSettings::needRestart() const
{
    return std::ranges::any_of(m_settings,
                               [](const BoundSetting &s) { return !s.worksAtOnce && s.shown() != s.loaded; });
}

void BoundSettings::addTo(SettingsDraft &draft) const
{
    for (const BoundSetting &setting : m_settings) {
        const QString value = setting.shown();
        if (value == setting.loaded)
            continue;
        draft.set(setting.section, setting.key, value);
        if (setting.isSecret)
            draft.tellChanged(setting.name);
        else
            draft.tell(setting.name, setting.loaded, value);
    }
}
