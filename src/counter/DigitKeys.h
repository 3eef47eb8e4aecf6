#pragma once

#include <QWidget>

class QPushButton;

/// The keys of a number pad, 7 8 9 above, large enough for a finger. They take no focus: what they type goes where the
/// focus is, and the keyboard has the same keys.
class DigitKeys : public QWidget
{
    Q_OBJECT

public:
    /// The keys' names are `prefix` and the digit; `extra` is the caption and the end of the name of the key beside 0,
    /// such as "00" or ".".
    DigitKeys(const QString &prefix, const QString &extra, const QString &extraName, QWidget *parent = nullptr);

Q_SIGNALS:
    void keyed(const QString &caption);
    void takenBack();

private:
    QPushButton *addKey(const QString &name, const QString &caption, int row, int column, int width = 1);
};
