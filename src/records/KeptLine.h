#pragma once

#include <QWidget>

class ElidedLabel;
class QPushButton;

/// A line that names the customer who was chosen in a register, with a button that takes it back.
class KeptLine : public QWidget
{
    Q_OBJECT

public:
    /// The button's caption, and the sentence that is its tip.
    KeptLine(const QString &buttonName, const QString &caption, const QString &tip, QWidget *parent = nullptr);

    /// Nothing hides the line.
    void showWords(const QString &words);

Q_SIGNALS:
    void takenBack();

private:
    ElidedLabel *m_words;
};
