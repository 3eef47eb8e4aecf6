#include "options/OptionsForm.h"

#include "look/Look.h"
#include "look/WrappedLabel.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {

template <typename Control>
Control *addControl(QFormLayout *form, const QString &caption, const QString &name, const QString &tip)
{
    auto *control = new Control;
    control->setObjectName(name);
    control->setAccessibleName(QString(caption).remove(u'&'));
    control->setToolTip(tip);
    form->addRow(caption, control);
    return control;
}

} // namespace

QFormLayout *OptionsForm::addGroup(QBoxLayout *column, const QString &title)
{
    auto *group = new QGroupBox(title);
    auto *form = new QFormLayout(group);
    form->setContentsMargins(8, 8, 8, 8);
    form->setSpacing(8);
    column->addWidget(group);
    return form;
}

QLineEdit *OptionsForm::addBox(QFormLayout *form, const QString &caption, const QString &name, const QString &tip)
{
    return addControl<QLineEdit>(form, caption, name, tip);
}

QSpinBox *OptionsForm::addFigure(QFormLayout *form, const QString &caption, const QString &name, const QString &tip,
                                 int least, int most)
{
    auto *figure = addControl<QSpinBox>(form, caption, name, tip);
    figure->setRange(least, most);
    return figure;
}

QComboBox *OptionsForm::addChoice(QFormLayout *form, const QString &caption, const QString &name, const QString &tip)
{
    return addControl<QComboBox>(form, caption, name, tip);
}

QPushButton *OptionsForm::button(const QString &name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

// By itself a label that wraps asks for the height that it would have in a narrow column.
QLabel *OptionsForm::words(const QString &name, const QString &text)
{
    QLabel *words = wrappedLabel(name, text);
    words->setMinimumHeight(words->fontMetrics().height());
    return words;
}

QLabel *OptionsForm::answer(const QString &name)
{
    QLabel *answer = words(name, {});
    answer->setMargin(4);
    answer->hide();
    return answer;
}

void OptionsForm::say(QLabel *answer, const QString &words, bool isGood)
{
    answer->setText(words);
    Look::paint(*answer, isGood ? Look::enough : Look::alert);
    answer->show();
}
