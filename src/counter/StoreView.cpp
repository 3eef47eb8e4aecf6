#include "counter/StoreView.h"

#include "counter/StoreModel.h"
#include "look/Look.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineHeight = 44;
constexpr int bandHeight = 30;
constexpr int side = 8;
constexpr double textSize = 1.15;

/// Paints a cell below the band of its group.
class BelowBand : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem cell = option;
        const QVariant heading = index.siblingAtColumn(StoreModel::Name).data(StoreModel::HeadingRole);
        if (heading.isValid()) {
            QRect band = cell.rect;
            band.setHeight(bandHeight);
            cell.rect.setTop(band.bottom() + 1);
            painter->fillRect(band, Look::accent);
            if (index.column() == StoreModel::Name) {
                QFont bold = option.font;
                bold.setBold(true);
                painter->save();
                painter->setFont(bold);
                painter->setPen(Look::paper);
                painter->drawText(band.adjusted(side, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                                  heading.toString().isEmpty() ? u"Other"_s : heading.toString());
                painter->restore();
            }
        }
        const QRect whole = cell.rect;
        cell.rect.adjust(side, 0, -side, 0);
        if (option.state & QStyle::State_Selected)
            painter->fillRect(whole, option.palette.highlight());
        QStyledItemDelegate::paint(painter, cell, index);
        painter->save();
        painter->setPen(option.palette.color(QPalette::Midlight));
        painter->drawLine(whole.bottomLeft(), whole.bottomRight());
        painter->restore();
    }
};

} // namespace

StoreView::StoreView(StoreModel &model, QWidget *parent) : QTableView(parent), m_model(model)
{
    setObjectName(u"ListView_Store"_s);
    setAccessibleName(u"Items for sale"_s);
    setModel(&model);
    setItemDelegate(new BelowBand(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * textSize);
    setFont(large);
    setVerticalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(lineHeight);
    QHeaderView *heads = horizontalHeader();
    heads->setHighlightSections(false);
    heads->setSectionResizeMode(StoreModel::Name, QHeaderView::Stretch);
    const auto width = [this](const QString &text) { return fontMetrics().horizontalAdvance(text) + 4 * side; };
    heads->resizeSection(StoreModel::Price, width(u"00000.00"_s));
    heads->resizeSection(StoreModel::Key, width(u"00000000000"_s));
    heads->resizeSection(StoreModel::Stock, width(u"sold out"_s));
    connect(&model, &QAbstractItemModel::modelReset, this, &StoreView::layOutRows);
}

void StoreView::layOutRows()
{
    // The header keeps the heights of rows that were others before.
    for (const int row : m_headings)
        if (row < m_model.rowCount())
            setRowHeight(row, lineHeight);
    m_headings = m_model.headingRows();
    for (const int row : m_headings)
        setRowHeight(row, lineHeight + bandHeight);
}

int StoreView::rowUnder(const QPoint &position) const
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid())
        return -1;
    const bool inBand = index.siblingAtColumn(StoreModel::Name).data(StoreModel::HeadingRole).isValid() &&
                        position.y() - rowViewportPosition(index.row()) < bandHeight;
    return inBand ? -1 : index.row();
}

void StoreView::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton ? rowUnder(event->position().toPoint()) : -1;
    if (m_pressed >= 0)
        QTableView::mousePressEvent(event);
}

void StoreView::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const int row = std::exchange(m_pressed, -1);
    if (row >= 0 && row == rowUnder(event->position().toPoint()))
        Q_EMIT chosen(row);
}

// The second half of a double click is none of its own.
void StoreView::mouseDoubleClickEvent(QMouseEvent *event)
{
    event->accept();
}

void StoreView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QTableView::keyPressEvent(event);
    else if (currentIndex().isValid() && !event->isAutoRepeat())
        Q_EMIT chosen(currentIndex().row());
}
