#pragma once

#include "counter/DrawerDialog.h"

#include <functional>

class QLineEdit;

/// What a window asks that opens the drawer and wants to know an amount.
struct CashQuestion
{
    QString window; ///< its objectName
    QString title;
    QString heading;
    QString box; ///< objectName of the amount
    QString caption;
};

/// Asks for an amount of the drawer's money, has it confirmed and the drawer closed, then records it. What could not be
/// recorded leaves the window open.
class CashAmountDialog : public DrawerDialog
{
    Q_OBJECT

public:
    /// `record` takes the amount as it was typed; it may throw NotDone and DbError.
    CashAmountDialog(Station &station, const CashQuestion &question, std::function<void(const QString &)> record,
                     QWidget *parent = nullptr);

private:
    void takeOver();

    Station &m_station;
    std::function<void(const QString &)> m_record;
    QLineEdit *m_amount;
};
