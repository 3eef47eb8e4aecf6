#pragma once

#include "schedule/DaySchedule.h"

#include <QAbstractTableModel>

#include <array>
#include <functional>

/// The rows of one business day under the grid: hour range, twelve-hour label, booker, telephone, paid state.
class DayModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { HourRange, TwelveHour, BookerName, Telephone, Paid, ColumnCount };
    enum Role {
        StateRole = Qt::UserRole, ///< RowState as int
        PastRole,                 ///< true when the hour is over
        MarkRole                  ///< Mark as int, in the column TwelveHour
    };
    enum Mark { NoMark, PresentHour, HourBefore };

    using QAbstractTableModel::QAbstractTableModel;

    /// Empties the model and builds the rows of a day without bookings.
    void build(WorkingHours hours);
    /// Says that the day could not be read: its rows are empty, and not known to be free.
    void showUnread();
    /// Shows another state of the day; the number of rows stays, and with it what is selected.
    void show(std::vector<DayRow> rows, const std::vector<bool> &past, int presentRow);

    [[nodiscard]] const std::vector<DayRow> &rows() const { return m_rows; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct ShownRow
    {
        std::array<QString, ColumnCount> texts;
        RowState state = RowState::NotRead;
        bool past = false;
        Mark mark = NoMark;

        bool operator==(const ShownRow &) const = default;
    };

    [[nodiscard]] std::vector<ShownRow> shownRows() const;
    /// Tells of the rows that the step changed, and of no other.
    void change(const std::function<void()> &step);
    [[nodiscard]] QString text(const DayRow &row, int column) const;
    /// What a screen reader says: the hour with its row's state, the booker, or why there is none.
    [[nodiscard]] QString spokenText(int row, int column) const;
    [[nodiscard]] RowState stateOfRow(int row) const;
    [[nodiscard]] Mark markOf(int row) const;

    std::vector<DayRow> m_rows;
    std::vector<bool> m_past;
    bool m_read = false;
    int m_presentRow = -1;
};
