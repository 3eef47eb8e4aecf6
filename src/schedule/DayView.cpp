#include "schedule/DayView.h"

#include "look/Look.h"
#include "schedule/DayModel.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int smallestRowHeight = 22;
constexpr int cellMargin = 8;
constexpr int signRoom = 14; // beside the times, for the sign of the present hour and of the hour before

Look::Tone toneOf(RowState state)
{
    switch (state) {
    case RowState::Booked:
        return Look::booked;
    case RowState::Paid:
        return Look::paid;
    case RowState::Shared:
        return Look::shared;
    case RowState::ExtraTime:
        return Look::extraTime;
    case RowState::Past:
    case RowState::NotRead:
        return Look::past;
    case RowState::Free:
        break;
    }
    return Look::free;
}

// One remark a line, unless a line is too long. What people typed is shown as it is, never read as markup.
QString historyTip(const QString &history)
{
    constexpr int widestTip = 600;
    const QFontMetrics metrics(QToolTip::font());
    QStringList lines = history.split(u"\r\n"_s);
    const bool fits = std::all_of(lines.cbegin(), lines.cend(), [&metrics](const QString &line) {
        return metrics.horizontalAdvance(line) <= widestTip;
    });
    const QString wrapping =
        fits ? u"<table><tr><td style='white-space:pre'>"_s
             : u"<table width='"_s + QString::number(widestTip) + u"'><tr><td style='white-space:pre-wrap'>"_s;
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    return wrapping + lines.join(u"<br>"_s) + u"</td></tr></table>"_s;
}

/// Paints a cell in its row's state; a selected row has a frame and bold text, so that its state can still be seen.
class SlotDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto state = RowState(index.data(DayModel::StateRole).toInt());
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->fillRect(option.rect, toneOf(state).background);
        paintText(*painter, option, index, state, selected);
        if (selected)
            paintFrame(*painter, option.rect, index.column());
        else if (option.state.testFlag(QStyle::State_HasFocus))
            paintFocus(*painter, option.rect, toneOf(state).text);
        painter->restore();
    }

private:
    void paintText(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index, RowState state,
                   bool selected) const
    {
        const auto mark = DayModel::Mark(index.data(DayModel::MarkRole).toInt());
        QString text = index.data().toString();
        QColor colour = toneOf(state).text;
        bool inWords = false;
        if (mark != DayModel::NoMark) {
            const Look::Tone &tone = mark == DayModel::PresentHour ? Look::presentHour : Look::hourBefore;
            painter.fillRect(option.rect.adjusted(2, 2, -2, -2), tone.background);
            colour = tone.text;
            paintSign(painter, option.rect, mark, colour);
        } else if (text.isEmpty() && index.column() == DayModel::BookerName) {
            text = stateInWords(state);
            inWords = true;
        }
        const QFont &font = fontOf(option.font, selected || mark != DayModel::NoMark, inWords);
        painter.setFont(font);
        painter.setPen(colour);
        const int left = index.column() == DayModel::TwelveHour ? cellMargin + signRoom : cellMargin;
        const QRect box = option.rect.adjusted(left, 0, -cellMargin, 0);
        const int alignment = index.column() == DayModel::Paid ? Qt::AlignRight : Qt::AlignLeft;
        painter.drawText(box, alignment | Qt::AlignVCenter | Qt::TextSingleLine,
                         QFontMetrics(font).elidedText(text, Qt::ElideRight, box.width()));
    }

    // Made once: a font that was changed is looked up anew, and for every cell that takes longer than its text.
    const QFont &fontOf(const QFont &plain, bool bold, bool italic) const
    {
        if (m_fonts.empty() || m_fonts.front() != plain) {
            m_fonts.assign(4, plain);
            for (const std::size_t i : {1U, 2U, 3U}) {
                m_fonts[i].setBold((i & 1U) != 0);
                m_fonts[i].setItalic((i & 2U) != 0);
            }
        }
        return m_fonts[(bold ? 1U : 0U) + (italic ? 2U : 0U)];
    }

    // A full triangle points at the present hour, a hollow one back at the hour before: not told by colour alone.
    static void paintSign(QPainter &painter, const QRect &rect, DayModel::Mark mark, const QColor &colour)
    {
        constexpr double half = 4;
        const QPointF middle(rect.left() + cellMargin + half, rect.center().y() + 0.5);
        const bool present = mark == DayModel::PresentHour;
        const double tip = present ? half : -half;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colour, 1.5));
        painter.setBrush(present ? QBrush(colour) : QBrush(Qt::NoBrush));
        painter.drawPolygon(
            QPolygonF{middle + QPointF(tip, 0), middle + QPointF(-tip, -half), middle + QPointF(-tip, half)});
    }

    // Where the keys stand while they move without selecting.
    static void paintFocus(QPainter &painter, const QRect &rect, const QColor &colour)
    {
        painter.setPen(QPen(colour, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect.adjusted(2, 2, -3, -3));
    }

    static void paintFrame(QPainter &painter, const QRect &rect, int column)
    {
        constexpr int line = 2;
        constexpr int bar = 5;
        painter.fillRect(QRect(rect.topLeft(), QSize(rect.width(), line)), Look::accent);
        painter.fillRect(QRect(rect.left(), rect.bottom() - line + 1, rect.width(), line), Look::accent);
        if (column == DayModel::HourRange)
            painter.fillRect(QRect(rect.topLeft(), QSize(bar, rect.height())), Look::accent);
        if (column == DayModel::ColumnCount - 1)
            painter.fillRect(QRect(rect.right() - line + 1, rect.top(), line, rect.height()), Look::accent);
    }

    mutable std::vector<QFont> m_fonts; ///< plain, bold, italic, both
};

} // namespace

DayView::DayView(QWidget *parent) : QTableView(parent)
{
    setItemDelegate(new SlotDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(smallestRowHeight);
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setAccessibleName(u"Hours of the day"_s);
    setGridStyle(Qt::SolidLine);
}

void DayView::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    setUpColumns();
}

void DayView::setUpColumns()
{
    QHeaderView *header = horizontalHeader();
    QFont widestFont = font();
    widestFont.setBold(true); // as selected rows are written
    const QFontMetrics metrics(widestFont);
    const auto fix = [&](int column, const QString &widest, int sign = 0) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        header->resizeSection(column, metrics.horizontalAdvance(widest) + sign + 2 * cellMargin + 4);
    };
    fix(DayModel::HourRange, u"00:00 to 00:00"_s);
    fix(DayModel::TwelveHour, u"00:00 MM"_s, signRoom);
    fix(DayModel::Telephone, u"00000 0000000"_s);
    fix(DayModel::Paid, u"Paid 0,000.00"_s);
    header->setSectionResizeMode(DayModel::BookerName, QHeaderView::Stretch);
}

void DayView::setTapSelects(bool on)
{
    setSelectionMode(on ? MultiSelection : ExtendedSelection);
}

std::vector<int> DayView::selectedRowNumbers() const
{
    std::vector<int> rows;
    const auto indexes = selectionModel()->selectedRows();
    for (const QModelIndex &index : indexes)
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int DayView::currentRowNumber() const
{
    const std::vector<int> rows = selectedRowNumbers();
    if (rows.empty())
        return -1;
    const int current = currentIndex().row();
    return std::binary_search(rows.cbegin(), rows.cend(), current) ? current : rows.front();
}

void DayView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::RightButton) {
        QTableView::mousePressEvent(event);
        return;
    }
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid())
        return;
    const auto rowFlags = QItemSelectionModel::Rows;
    const bool isSelected = selectionModel()->isRowSelected(index.row(), {});
    selectionModel()->setCurrentIndex(index, isSelected ? QItemSelectionModel::NoUpdate
                                                        : QItemSelectionModel::ClearAndSelect | rowFlags);
}

void DayView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTableView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    // The first press of the two deselects a row that a tap had selected.
    if (selectionMode() == MultiSelection)
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    Q_EMIT bookingWanted();
}

void DayView::keyPressEvent(QKeyEvent *event)
{
    const bool menuKey =
        event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT bookingWanted();
    else if (menuKey)
        wantMenuAtCurrentRow();
    else
        QTableView::keyPressEvent(event);
}

void DayView::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        wantMenuAtCurrentRow();
    else
        Q_EMIT menuWanted(event->globalPos());
}

void DayView::wantMenuAtCurrentRow()
{
    const QRect row = currentIndex().isValid() ? visualRect(currentIndex()) : viewport()->rect();
    Q_EMIT menuWanted(viewport()->mapToGlobal(row.center()));
}

bool DayView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !m_history)
        return QTableView::viewportEvent(event);
    constexpr int shownMilliseconds = 20000;
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString history = index.isValid() ? m_history(index.row()).trimmed() : QString();
    if (history.isEmpty()) {
        QToolTip::hideText();
        return true;
    }
    const QRect row = visualRect(index).united(visualRect(index.siblingAtColumn(DayModel::ColumnCount - 1)));
    QToolTip::showText(help->globalPos(), historyTip(history), viewport(), row, shownMilliseconds);
    return true;
}
