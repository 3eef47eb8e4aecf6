#pragma once

#include <QString>

class QBoxLayout;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QWidget;

/// The parts that pages of the options are made of, each with its object name, its label and its tip.
namespace OptionsForm {

/// A frame with a title, and its rows.
QFormLayout *addGroup(QBoxLayout *column, const QString &title);
QLineEdit *addBox(QFormLayout *form, const QString &caption, const QString &name, const QString &tip);
QSpinBox *addFigure(QFormLayout *form, const QString &caption, const QString &name, const QString &tip, int least,
                    int most);
QComboBox *addChoice(QFormLayout *form, const QString &caption, const QString &name, const QString &tip);
/// It does not answer to Enter from afar.
QPushButton *button(const QString &name, const QString &caption, const QString &tip);
/// Words that wrap and ask for no more height than they need.
QLabel *words(const QString &name, const QString &text);
/// The same, hidden until something is said.
QLabel *answer(const QString &name);
void say(QLabel *answer, const QString &words, bool isGood);

} // namespace OptionsForm
