#pragma once

#include <QWidget>

#include <vector>

class QLabel;
class QSpinBox;

/// Coins and notes, counted by their kinds and added up.
class MoneyCount : public QWidget
{
    Q_OBJECT

public:
    /// The kinds in cents.
    explicit MoneyCount(const std::vector<qint64> &kinds, QWidget *parent = nullptr);

Q_SIGNALS:
    /// Their sum, as "345.5".
    void counted(const QString &amount);

private:
    void addUp();

    struct Kind
    {
        qint64 cents;
        QSpinBox *pieces;
        QLabel *sum;
    };
    std::vector<Kind> m_kinds;
};

/// The coins that there are, and the notes of the settings, in cents, the smallest first.
std::vector<qint64> kindsOfMoney(const std::vector<qint64> &notes);
