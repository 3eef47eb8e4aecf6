#pragma once

#include <QLabel>

class QLineEdit;

/// Stands under a box for an amount and says as which number a text will be read that is not simply one.
class AmountNote : public QLabel
{
    Q_OBJECT

public:
    explicit AmountNote(QLineEdit &box);

private:
    void show(const QString &typed);
};
