#include "plan/LayoutPlan.h"

#include "app/Settings.h"
#include "look/Look.h"
#include "plan/FieldDrawing.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double ownLetteringScale = 0.7; // below it the picture's own lettering is too small to be read
constexpr double margin = 4;

} // namespace

LayoutPlan::LayoutPlan(QWidget *parent) : PlacedPicture(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(u"Plan of the fields"_s);
}

void LayoutPlan::load(const QString &section, const QString &hotSpotSection, const AppSettings &settings)
{
    m_names = settings.namesOfFields();
    m_spots = HotSpots(hotSpotSection, settings.MaxFieldIndex);
    const auto fieldsPlaced = qScopeGuard([this] {
        const QRectF spots = m_spots.bounds();
        setFallbackSize({spots.left() + spots.right(), spots.top() + spots.bottom()});
        placeAlertLabels();
        describe();
    });
    loadPicture(section);
}

void LayoutPlan::addAlertLabels()
{
    m_alerts.make(this, m_names);
    placeAlertLabels();
}

void LayoutPlan::setSelectedField(int field)
{
    m_selected = field;
    describe();
}

void LayoutPlan::setFieldStatus(std::vector<FieldStatus> status)
{
    // Painting the plan costs as much as the grid, and another day of a field does not change what goes on now.
    if (status == m_status)
        return;
    m_status = std::move(status);
    describe();
}

void LayoutPlan::setAlertCaptions(const std::vector<QString> &captions)
{
    if (m_alerts.setCaptions(captions))
        describe();
}

void LayoutPlan::setAlertsLit(bool lit)
{
    m_alerts.setLit(lit);
}

QRectF LayoutPlan::fieldRect(int field) const
{
    const auto spot = m_spots.spot(field);
    const QSizeF size = pictureSize();
    if (!spot || size.isEmpty())
        return {};
    const QRectF place = pictureRect();
    const double across = place.width() / size.width();
    const double down = place.height() / size.height();
    return {place.left() + spot->left * across, place.top() + spot->top * down, (spot->right - spot->left) * across,
            (spot->bottom - spot->top) * down};
}

QPointF LayoutPlan::toPicture(QPointF position) const
{
    const QRectF place = pictureRect();
    if (place.isEmpty())
        return position;
    return {(position.x() - place.left()) * pictureSize().width() / place.width(),
            (position.y() - place.top()) * pictureSize().height() / place.height()};
}

QString LayoutPlan::fieldName(int field) const
{
    const auto index = std::size_t(field);
    return index < m_names.size() ? m_names[index] : QString();
}

QString LayoutPlan::fieldSentence(int field) const
{
    QString sentence = fieldName(field);
    if (std::size_t(field) < m_status.size()) {
        const FieldStatus &status = m_status[std::size_t(field)];
        sentence += u": "_s + status.stateText();
        if (status.state == FieldState::Booked)
            sentence += u", "_s + status.booker;
        if (!status.lightText().isEmpty())
            sentence += u". "_s + status.lightText();
    }
    if (m_alerts.says(field))
        sentence += u". The players change at the hour."_s;
    return sentence;
}

void LayoutPlan::describe()
{
    const int field = m_pointed >= 0 ? m_pointed : m_selected;
    setAccessibleDescription(field >= 0 ? fieldSentence(field) : QString());
    update();
}

void LayoutPlan::pointAt(int field)
{
    setCursor(field >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (field == m_pointed)
        return;
    m_pointed = field;
    describe();
}

bool LayoutPlan::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return PlacedPicture::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const int field = m_spots.fieldAt(toPicture(help->pos()));
    // Marked as rich text and escaped, so that a booker's name stands as it was typed, and long ones wrap.
    const QString tip = field >= 0 ? u"<qt>"_s + fieldSentence(field).toHtmlEscaped() : QString();
    QToolTip::showText(help->globalPos(), tip, this, fieldRect(field).toAlignedRect());
    return true;
}

void LayoutPlan::resizeEvent(QResizeEvent *event)
{
    PlacedPicture::resizeEvent(event);
    placeAlertLabels();
}

void LayoutPlan::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = toPicture(event->position());
    pointAt(m_spots.fieldAt(point));
    Q_EMIT hovered(m_spots.textAt(point));
}

// A finger has not hovered before it clicks.
void LayoutPlan::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint()))
        return;
    mouseMoveEvent(event);
    if (const int field = m_spots.fieldAt(toPicture(event->position())); field >= 0)
        Q_EMIT clicked(field);
}

void LayoutPlan::leaveEvent(QEvent *event)
{
    pointAt(-1);
    PlacedPicture::leaveEvent(event);
}

void LayoutPlan::keyPressEvent(QKeyEvent *event)
{
    const int present = m_pointed >= 0 ? m_pointed : m_selected;
    const int last = m_spots.count() - 1;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        pointAt(std::clamp(present - 1, std::min(0, last), std::max(0, last)));
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        pointAt(std::min(present + 1, last));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (present < 0 || present > last)
            break;
        Q_EMIT hovered(QString::number(present));
        Q_EMIT clicked(present);
        break;
    default:
        PlacedPicture::keyPressEvent(event);
    }
}

bool LayoutPlan::isCompact() const
{
    return canvasScale() < ownLetteringScale || !hasPicture();
}

// At the right of its field, where the plate is not.
void LayoutPlan::placeAlertLabels()
{
    std::vector<QRectF> rooms;
    for (std::size_t field = 0; field < m_names.size(); ++field)
        rooms.push_back(fieldRect(int(field)));
    m_alerts.place(rooms, font(), isCompact(), height());
}

void LayoutPlan::paintEvent(QPaintEvent *event)
{
    PlacedPicture::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int field = 0; field < m_spots.count(); ++field) {
        if (!fieldRect(field).isEmpty())
            paintField(painter, field);
    }
    if (const QRectF place = fieldRect(m_pointed); m_pointed != m_selected && !place.isEmpty())
        drawPointed(painter, place);
    if (const QRectF place = fieldRect(m_selected); !place.isEmpty())
        drawSelected(painter, place, isCompact());
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Look::accent, 2));
        painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}

void LayoutPlan::paintField(QPainter &painter, int field) const
{
    DrawnField drawn{fieldRect(field), plateRoom(field), fieldName(field), {}, isCompact()};
    if (std::size_t(field) < m_status.size())
        drawn.status = m_status[std::size_t(field)];
    drawField(painter, drawn, font());
}

// A small plan has the plate where a picture's lettering mostly stands, in the upper left, in its stead; a large one in
// the lower left, beside it. The alert label stands above or below the plate, in a flat field beside it.
QRectF LayoutPlan::plateRoom(int field) const
{
    QRectF room = fieldRect(field).adjusted(margin, margin, -margin, -margin);
    if (!m_alerts.says(field))
        return room;
    const QSize label = m_alerts.size(field);
    if (room.height() < 2.5 * label.height())
        room.setRight(room.right() - label.width() - margin);
    else if (isCompact())
        room.setBottom(room.bottom() - label.height());
    else
        room.setTop(room.top() + label.height());
    return room;
}
