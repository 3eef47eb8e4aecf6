#include "schedule/DayModel.h"

using namespace Qt::StringLiterals;

void DayModel::build(WorkingHours hours)
{
    beginResetModel();
    m_rows = emptyDay(hours);
    m_past.assign(m_rows.size(), false);
    m_presentRow = -1;
    m_read = false;
    endResetModel();
}

void DayModel::show(std::vector<DayRow> rows, const std::vector<bool> &past, int presentRow)
{
    Q_ASSERT(rows.size() == m_rows.size() && past.size() == rows.size());
    change([&] {
        m_rows = std::move(rows);
        m_past = past;
        m_read = true;
        m_presentRow = presentRow;
    });
}

void DayModel::showUnread()
{
    change([this] {
        for (DayRow &row : m_rows)
            row = {row.hour, row.hourRange, row.twelveHour};
        m_read = false;
    });
}

// Cells next to each other are told of together: a view repaints one rectangle.
void DayModel::change(const std::function<void()> &step)
{
    const std::vector<ShownRow> before = shownRows();
    step();
    const std::vector<ShownRow> after = shownRows();
    for (std::size_t row = 0; row < after.size(); ++row) {
        const std::size_t first = row;
        while (row < after.size() && after[row] != before[row])
            ++row;
        if (row > first)
            Q_EMIT dataChanged(index(int(first), 0), index(int(row) - 1, ColumnCount - 1));
    }
}

std::vector<DayModel::ShownRow> DayModel::shownRows() const
{
    std::vector<ShownRow> shown;
    shown.reserve(m_rows.size());
    for (int row = 0; row < rowCount(); ++row) {
        ShownRow &next = shown.emplace_back();
        for (int column = 0; column < ColumnCount; ++column)
            next.texts.at(std::size_t(column)) = text(m_rows[std::size_t(row)], column);
        next.state = stateOfRow(row);
        next.past = m_past[std::size_t(row)];
        next.mark = markOf(row);
    }
    return shown;
}

int DayModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int DayModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString DayModel::text(const DayRow &row, int column) const
{
    switch (column) {
    case HourRange:
        return row.hourRange;
    case TwelveHour:
        return row.twelveHour;
    case BookerName:
        return row.booker;
    case Telephone:
        return row.telephone;
    default:
        return row.paid;
    }
}

DayModel::Mark DayModel::markOf(int row) const
{
    if (m_presentRow < 0 || row > m_presentRow || row < m_presentRow - 1)
        return NoMark;
    return row == m_presentRow ? PresentHour : HourBefore;
}

RowState DayModel::stateOfRow(int row) const
{
    const auto index = std::size_t(row);
    return m_read ? stateOf(m_rows[index], m_past[index]) : RowState::NotRead;
}

QString DayModel::spokenText(int row, int column) const
{
    const RowState state = stateOfRow(row);
    QString spoken = text(m_rows[std::size_t(row)], column);
    if (column == HourRange) {
        spoken += u", "_s + stateInWords(state);
        if (m_read && m_past[std::size_t(row)] && state != RowState::Past)
            spoken += u", past"_s;
    } else if (column == TwelveHour && markOf(row) != NoMark) {
        spoken += markOf(row) == PresentHour ? u", present hour"_s : u", hour before"_s;
    } else if (column == BookerName && spoken.isEmpty()) {
        spoken = stateInWords(state);
    }
    return spoken;
}

QVariant DayModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const auto row = std::size_t(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return text(m_rows[row], index.column());
    case Qt::AccessibleTextRole:
        return spokenText(index.row(), index.column());
    case StateRole:
        return int(stateOfRow(index.row()));
    case PastRole:
        return bool(m_past[row]);
    case MarkRole:
        return int(index.column() == TwelveHour ? markOf(index.row()) : NoMark);
    default:
        return {};
    }
}

QVariant DayModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList titles{u"Hour"_s, u"Time"_s, u"Booker"_s, u"Telephone"_s, u"Paid"_s};
    return titles.value(section);
}
