#pragma once

#include "counter/DrawerDialog.h"
#include "counter/ShiftEnd.h"

class FiguresTable;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

/// Ends the shift of station.shiftName: the drawer opens, its money is counted, and the shift recorded. Beside it stand
/// the figures of the counter's own tables, as help.
class frm_ShiftEnd : public DrawerDialog
{
    Q_OBJECT

public:
    /// The names of the payment lists that wait are told.
    frm_ShiftEnd(Station &station, const QStringList &heldLists, QWidget *parent = nullptr);

    [[nodiscard]] bool isRecorded() const { return m_recorded.has_value(); }

Q_SIGNALS:
    void slipWanted(const EndedShift &shift);
    void reportWanted();

protected:
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] QWidget *makeCounting();
    [[nodiscard]] QWidget *makeFigures(const QStringList &heldLists);
    [[nodiscard]] QWidget *makeButtons();
    QLineEdit *addAmount(QVBoxLayout &layout, const QString &name, const QString &caption);
    void readFigures();
    void showSales();
    void record();

    Station &m_station;
    ShiftEnd m_end;
    std::optional<ShiftFigures> m_figures;
    std::optional<EndedShift> m_recorded;
    QLineEdit *m_money = nullptr;
    QLineEdit *m_float = nullptr;
    QLineEdit *m_sales = nullptr;
    FiguresTable *m_list = nullptr;
    QLabel *m_difference = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_slip = nullptr;
};
