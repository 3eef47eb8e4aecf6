#include "options/RateGrid.h"

#include "app/Formats.h"
#include "look/Look.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int hourWidth = 56;
constexpr int leastDayWidth = 68;
constexpr int dayWidth = 84;
constexpr int headHeight = 24;
constexpr int leastRowHeight = 18;
constexpr int rowHeight = 22;
constexpr int mostTyped = 9;

} // namespace

RateGrid::RateGrid(WorkingHours hours, QWidget *parent) : QWidget(parent), m_hours(hoursOfDay(hours))
{
    setObjectName(u"RateGrid"_s);
    setAccessibleName(u"Prices of the week by day and hour"_s);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize RateGrid::sizeHint() const
{
    return {hourWidth + WeekRates::days * dayWidth, headHeight + rows() * rowHeight + 1};
}

QSize RateGrid::minimumSizeHint() const
{
    return {hourWidth + WeekRates::days * leastDayWidth, headHeight + rows() * leastRowHeight + 1};
}

void RateGrid::setWeek(const WeekRates &week, const WeekRates &saved)
{
    m_week = week;
    m_saved = saved;
    m_typed.clear();
    m_prices.clear();
    for (int day = 0; day < WeekRates::days; ++day)
        for (const int hour : m_hours)
            if (const auto price = m_week.price(day, hour))
                m_prices.push_back(*price);
    std::sort(m_prices.begin(), m_prices.end());
    m_prices.erase(std::unique(m_prices.begin(), m_prices.end()), m_prices.end());
    tell();
}

void RateGrid::choose(int day, int row, int toDay, int toRow)
{
    m_anchor = {day, row};
    move({toDay, toRow}, true);
}

void RateGrid::fill(std::optional<double> price)
{
    WeekRates filled = m_week;
    const QRect cells = chosen();
    for (int day = cells.left(); day <= cells.right(); ++day)
        for (int row = cells.top(); row <= cells.bottom(); ++row)
            filled.setPrice(day, m_hours.at(std::size_t(row)), price);
    setWeek(filled, m_saved);
    Q_EMIT changed();
}

QString RateGrid::chosenInWords() const
{
    const QRect cells = chosen();
    const int first = m_hours.at(std::size_t(cells.top()));
    const int last = m_hours.at(std::size_t(cells.bottom()));
    const QString days =
        cells.width() == 1 ? rateDay(cells.left()) : rateDay(cells.left()) + u" to "_s + rateDay(cells.right());
    const QString hours = hourRangeText(first).left(5) + u" to "_s + hourRangeText(last).right(5);
    QStringList prices;
    for (int day = cells.left(); day <= cells.right(); ++day)
        for (int row = cells.top(); row <= cells.bottom(); ++row)
            if (const QString text = cellText(day, m_hours.at(std::size_t(row))); !prices.contains(text))
                prices << text;
    const QString price = prices.size() == 1 ? prices.first() : u"different prices"_s;
    return days + u", "_s + hours + u": "_s + price;
}

QRect RateGrid::cellRect(int day, int row) const
{
    const auto edge = [](int from, int length, int count, int index) { return from + length * index / count; };
    const int days = WeekRates::days;
    const int left = edge(hourWidth, width() - 1 - hourWidth, days, day);
    const int right = edge(hourWidth, width() - 1 - hourWidth, days, day + 1);
    const int top = edge(headHeight, height() - 1 - headHeight, rows(), row);
    const int bottom = edge(headHeight, height() - 1 - headHeight, rows(), row + 1);
    return {left, top, right - left, bottom - top};
}

QPoint RateGrid::cellAt(QPoint position) const
{
    QPoint cell(-1, -1);
    for (int day = 0; day < WeekRates::days; ++day)
        if (position.x() >= cellRect(day, 0).left())
            cell.setX(day);
    for (int row = 0; row < rows(); ++row)
        if (position.y() >= cellRect(0, row).top())
            cell.setY(row);
    return cell;
}

void RateGrid::move(QPoint cursor, bool extend)
{
    m_cursor = {std::clamp(cursor.x(), 0, WeekRates::days - 1), std::clamp(cursor.y(), 0, rows() - 1)};
    if (!extend)
        m_anchor = m_cursor;
    m_typed.clear();
    tell();
}

void RateGrid::tell()
{
    setAccessibleDescription(chosenInWords());
    Q_EMIT choiceChanged();
    update();
}

void RateGrid::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint cell = cellAt(event->pos());
    const QPoint last(WeekRates::days - 1, rows() - 1);
    m_isDrawing = cell.x() >= 0 && cell.y() >= 0;
    if (m_isDrawing) {
        move(cell, event->modifiers() & Qt::ShiftModifier);
        return;
    }
    choose(std::max(cell.x(), 0), std::max(cell.y(), 0), cell.x() < 0 ? last.x() : cell.x(),
           cell.y() < 0 ? last.y() : cell.y());
}

void RateGrid::mouseMoveEvent(QMouseEvent *event)
{
    if (m_isDrawing)
        move(cellAt(event->pos()), true);
}

void RateGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_isDrawing, false))
        Q_EMIT drawn();
}

void RateGrid::take(const QString &digits)
{
    if (m_typed.size() < mostTyped && !(digits == u"." && m_typed.contains(u'.')))
        m_typed += digits;
    update();
}

void RateGrid::commitTyped()
{
    if (const QString price = std::exchange(m_typed, {}); !price.isEmpty() && price != u".")
        Q_EMIT typed(price);
}

void RateGrid::keyPressEvent(QKeyEvent *event)
{
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    const auto go = [&](int days, int hours) {
        commitTyped();
        move(m_cursor + QPoint(days, hours), extend);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return go(-1, 0);
    case Qt::Key_Right:
        return go(1, 0);
    case Qt::Key_Up:
        return go(0, -1);
    case Qt::Key_Down:
        return go(0, 1);
    case Qt::Key_Home:
        return go(0, -rows());
    case Qt::Key_End:
        return go(0, rows());
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return commitTyped();
    case Qt::Key_Delete:
        return fill(std::nullopt);
    case Qt::Key_Backspace:
        m_typed.chop(1);
        return update();
    default:
        break;
    }
    if (event->matches(QKeySequence::SelectAll))
        return choose(0, 0, WeekRates::days - 1, rows() - 1);
    if (event->key() == Qt::Key_Escape && !m_typed.isEmpty()) {
        m_typed.clear();
        return update();
    }
    const QString text = event->text();
    const bool isNumber = text.size() == 1 && (text[0].isDigit() || text == u"." || text == u",");
    if (isNumber && !(event->modifiers() & Qt::AltModifier))
        take(text == u"," ? u"."_s : text);
    else
        QWidget::keyPressEvent(event);
}

// Escape and Enter mean something of their own here, which a window around it must not take first.
bool RateGrid::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && !m_typed.isEmpty() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QPoint cell = cellAt(help->pos());
        if (cell.x() < 0 || cell.y() < 0) {
            QToolTip::hideText();
            return true;
        }
        const int hour = m_hours.at(std::size_t(cell.y()));
        QString tip = rateDay(cell.x()) + u", "_s + hourRangeText(hour) + u": "_s + cellText(cell.x(), hour);
        for (const double other : m_week.others(cell.x(), hour))
            tip += u"; "_s + formatNumber(other, u"##0.00"_s) + u" stands there too"_s;
        QToolTip::showText(help->globalPos(), tip, this, cellRect(cell.x(), cell.y()));
        return true;
    }
    return QWidget::event(event);
}

void RateGrid::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void RateGrid::focusOutEvent(QFocusEvent *event)
{
    commitTyped();
    QWidget::focusOutEvent(event);
    update();
}

QString RateGrid::cellText(int day, int hour) const
{
    const auto price = m_week.price(day, hour);
    if (!price)
        return u"no price"_s;
    const int count = m_week.rowCount(day, hour);
    return formatNumber(*price, u"##0.00"_s) + (count > 1 ? u" ×"_s + QString::number(count) : QString());
}

// The dearer, the darker; each can be read with the same ink.
QColor RateGrid::priceColour(double price) const
{
    const auto place = std::lower_bound(m_prices.cbegin(), m_prices.cend(), price) - m_prices.cbegin();
    const double share = m_prices.size() < 2 ? 0 : double(place) / double(m_prices.size() - 1);
    const QColor &low = Look::free.background;
    const QColor &high = Look::booked.background;
    const auto mix = [share](int from, int to) { return int(from + (to - from) * share); };
    return {mix(low.red(), high.red()), mix(low.green(), high.green()), mix(low.blue(), high.blue())};
}

void RateGrid::paintHeadings(QPainter &painter) const
{
    const QRect cells = chosen();
    const auto paintHeading = [&](const QRect &place, const QString &text, bool isChosen, int alignment) {
        if (isChosen)
            painter.fillRect(place.adjusted(1, 1, 0, 0), palette().highlight());
        painter.setPen(palette().color(isChosen ? QPalette::HighlightedText : QPalette::WindowText));
        const QRect room = place.adjusted(1, 0, -1, 0);
        painter.drawText(room, alignment | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
    };
    for (int day = 0; day < WeekRates::days; ++day) {
        const QRect cell = cellRect(day, 0);
        paintHeading({cell.left(), 0, cell.width(), headHeight}, rateDay(day),
                     cells.left() <= day && day <= cells.right(), Qt::AlignHCenter);
    }
    for (int row = 0; row < rows(); ++row) {
        const QRect cell = cellRect(0, row);
        paintHeading({0, cell.top(), hourWidth, cell.height()}, hourRangeText(m_hours.at(std::size_t(row))).left(5),
                     cells.top() <= row && row <= cells.bottom(), Qt::AlignRight);
    }
}

void RateGrid::paintCell(QPainter &painter, int day, int row) const
{
    const int hour = m_hours.at(std::size_t(row));
    const QRect cell = cellRect(day, row);
    const auto price = m_week.price(day, hour);
    const bool isDouble = m_week.rowCount(day, hour) > 1;
    painter.fillRect(cell, !price ? Look::past.background : isDouble ? Look::shared.background : priceColour(*price));
    if (!price)
        painter.fillRect(cell, QBrush(Look::past.text.lighter(190), Qt::BDiagPattern));
    if (isDouble)
        painter.fillRect(cell, QBrush(Look::shared.text.lighter(260), Qt::Dense7Pattern));
    painter.setPen(Look::past.background.darker(115));
    painter.drawRect(cell);
    const bool isTyped = !m_typed.isEmpty() && chosen().contains(day, row);
    painter.setPen(isDouble ? Look::shared.text : price ? Look::ink : Look::past.text.darker(140));
    QFont cellFont = font();
    cellFont.setBold(isTyped || isDouble);
    cellFont.setItalic(isTyped);
    painter.setFont(cellFont);
    painter.drawText(cell.adjusted(2, 0, -4, 0), Qt::AlignRight | Qt::AlignVCenter,
                     isTyped ? m_typed : cellText(day, hour));
    if (m_week.price(day, hour) != m_saved.price(day, hour)) {
        const QPoint corner = cell.topLeft() + QPoint(1, 1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Look::alert.background);
        painter.drawPolygon(QPolygon({corner, corner + QPoint(8, 0), corner + QPoint(0, 8)}));
        painter.setBrush(Qt::NoBrush);
    }
}

void RateGrid::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    paintHeadings(painter);
    for (int day = 0; day < WeekRates::days; ++day)
        for (int row = 0; row < rows(); ++row)
            paintCell(painter, day, row);
    const QRect cells = chosen();
    const QRect frame = cellRect(cells.left(), cells.top()) | cellRect(cells.right(), cells.bottom());
    painter.setPen(QPen(hasFocus() ? Look::accent : Look::past.text, 3));
    painter.drawRect(frame);
    if (cells.width() > 1 || cells.height() > 1) {
        painter.setPen(QPen(Look::ink, 1, Qt::DotLine));
        painter.drawRect(cellRect(m_cursor.x(), m_cursor.y()).adjusted(3, 3, -3, -3));
    }
}
