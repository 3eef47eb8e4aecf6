#pragma once

#include "counter/ShiftFigures.h"

#include <QStringList>

/// The three boxes of the window, as they were typed: each is read as a number, 0 for none.
struct CountedMoney
{
    QString sales;
    QString moneyInDrawer;
    QString cashFloat;
};

/// What the box of the sales shows: money less float; empty until both are filled in.
QString salesOf(const QString &moneyInDrawer, const QString &cashFloat);

/// The end of one shift at this counter: writes tbl_log, tbl_system and one row of tbl_shift, all or nothing, under the
/// lock of the counter's numbers.
class ShiftEnd
{
public:
    /// Of station.shiftName.
    explicit ShiftEnd(Station &station);

    /// Looks which shift ended before this one, so that record() can tell whether another copy of the program has ended
    /// this one meanwhile. Throws DbError.
    void open();
    /// The shift before, when there is one; read by open().
    [[nodiscard]] const std::optional<EndedShift> &before() const { return m_before; }

    /// The shift as it was recorded; a second call writes nothing, nor does one after a lost answer when the row
    /// stands. Throws NotDone and DbError, and NotDone when another copy has ended the shift.
    const EndedShift &record(const CountedMoney &money);

private:
    class Recording;

    /// The latest row is this shift's, written by an attempt that was made at one of these moments. Throws NotDone for
    /// one of another copy.
    [[nodiscard]] bool isOver(const DbRows &last, const QStringList &tried) const;

    Station &m_station;
    QString m_shiftName;
    std::optional<EndedShift> m_before;
    bool m_isOpen = false;
    QStringList m_tried; ///< the moments of attempts whose end may be unknown
    std::optional<EndedShift> m_recorded;
};
