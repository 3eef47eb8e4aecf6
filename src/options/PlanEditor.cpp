#include "options/PlanEditor.h"

#include "look/Look.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double reach = 8;     // of a corner, in pixels of the widget
constexpr double leastSide = 4; // a smaller place was a click, in pixels of the picture
constexpr QSizeF withoutPicture{880, 560};

std::array<QPointF, 4> cornersOf(const QRectF &rect)
{
    return {rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
}

} // namespace

PlanEditor::PlanEditor(QWidget *parent) : QWidget(parent)
{
    setObjectName(u"PlanEditor"_s);
    setAccessibleName(u"Plan on which the fields' places are drawn"_s);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(policy);
}

void PlanEditor::setPicture(const QImage &picture)
{
    m_picture = picture;
    update();
}

void PlanEditor::setSpots(std::vector<std::optional<HotSpot>> spots, std::vector<QString> names)
{
    m_spots = std::move(spots);
    m_names = std::move(names);
    m_spots.resize(m_names.size());
    m_chosen = std::min(m_chosen, int(m_names.size()) - 1);
    update();
}

void PlanEditor::chooseField(int field)
{
    m_chosen = field;
    update();
}

void PlanEditor::takeOff()
{
    if (m_chosen < 0 || !m_spots[std::size_t(m_chosen)])
        return;
    m_spots[std::size_t(m_chosen)].reset();
    update();
    Q_EMIT changed();
}

QSizeF PlanEditor::pictureSize() const
{
    if (!m_picture.isNull())
        return m_picture.size();
    const QRectF all = HotSpots(m_spots).bounds();
    return withoutPicture.expandedTo({all.right(), all.bottom()});
}

QRectF PlanEditor::pictureRect() const
{
    const QSizeF size = pictureSize().scaled(this->size(), Qt::KeepAspectRatio);
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QPointF PlanEditor::fromPicture(QPointF point) const
{
    const QRectF place = pictureRect();
    const double scale = place.width() / pictureSize().width();
    return place.topLeft() + point * scale;
}

QPointF PlanEditor::toPicture(QPointF position) const
{
    const QRectF place = pictureRect();
    return (position - place.topLeft()) * (pictureSize().width() / place.width());
}

QRectF PlanEditor::placeOf(int field) const
{
    const auto index = std::size_t(field);
    if (field < 0 || index >= m_spots.size() || !m_spots[index])
        return {};
    const QRectF rect = m_spots[index]->rect();
    return {fromPicture(rect.topLeft()), fromPicture(rect.bottomRight())};
}

QRectF PlanEditor::chosenRect() const
{
    const auto index = std::size_t(m_chosen);
    return m_chosen >= 0 && m_spots[index] ? m_spots[index]->rect() : QRectF();
}

int PlanEditor::cornerAt(QPointF position) const
{
    const QRectF place = placeOf(m_chosen);
    if (place.isEmpty())
        return -1;
    const auto corners = cornersOf(place);
    for (std::size_t i = 0; i < corners.size(); ++i)
        if ((corners.at(i) - position).manhattanLength() <= reach)
            return int(i);
    return -1;
}

void PlanEditor::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_names.empty())
        return;
    const QPointF point = toPicture(event->position());
    const int corner = cornerAt(event->position());
    if (corner < 0 && !chosenRect().contains(point)) {
        if (const int field = HotSpots(m_spots).fieldAt(point); field >= 0) {
            chooseField(field);
            Q_EMIT chosen(field);
        }
    }
    m_before = chosenRect();
    m_from = point;
    if (corner >= 0) {
        m_drag = Drag::Size;
        m_from = cornersOf(m_before).at(std::size_t(corner + 2) % 4);
    } else if (m_before.contains(point)) {
        m_drag = Drag::Move;
    } else {
        m_drag = m_chosen >= 0 ? Drag::Draw : Drag::None;
    }
}

void PlanEditor::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = toPicture(event->position());
    switch (m_drag) {
    case Drag::None:
        showPointerAt(event->position());
        break;
    case Drag::Draw:
    case Drag::Size:
        if (const QRectF rect = QRectF(m_from, point).normalized();
            rect.width() >= leastSide && rect.height() >= leastSide)
            setChosenRect(rect);
        break;
    case Drag::Move:
        setChosenRect(m_before.translated(point - m_from));
        break;
    }
}

void PlanEditor::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_drag = Drag::None;
}

void PlanEditor::showPointerAt(QPointF position)
{
    const int corner = cornerAt(position);
    if (corner >= 0)
        setCursor(corner % 2 == 0 ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
    else if (HotSpots(m_spots).fieldAt(toPicture(position)) >= 0)
        setCursor(Qt::SizeAllCursor);
    else
        setCursor(Qt::CrossCursor);
}

// What is moved keeps its size at the picture's edges; what is drawn is cut off there.
void PlanEditor::setChosenRect(QRectF rect)
{
    const QSizeF size = pictureSize();
    const QRectF all({0, 0}, size);
    if (m_drag == Drag::Draw || m_drag == Drag::Size)
        rect = rect.intersected(all);
    else
        rect.moveTo(std::clamp(rect.left(), 0.0, std::max(0.0, size.width() - rect.width())),
                    std::clamp(rect.top(), 0.0, std::max(0.0, size.height() - rect.height())));
    if (m_chosen < 0 || rect.width() < leastSide || rect.height() < leastSide)
        return;
    m_spots[std::size_t(m_chosen)] = HotSpot{double(qRound(rect.left())), double(qRound(rect.top())),
                                             double(qRound(rect.right())), double(qRound(rect.bottom()))};
    update();
    Q_EMIT changed();
}

void PlanEditor::keyPressEvent(QKeyEvent *event)
{
    QPointF step;
    switch (event->key()) {
    case Qt::Key_Left:
        step = {-1, 0};
        break;
    case Qt::Key_Right:
        step = {1, 0};
        break;
    case Qt::Key_Up:
        step = {0, -1};
        break;
    case Qt::Key_Down:
        step = {0, 1};
        break;
    case Qt::Key_Delete:
        takeOff();
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    QRectF rect = chosenRect();
    if (rect.isEmpty())
        return;
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        rect.setBottomRight(rect.bottomRight() + step);
    else
        rect.translate(step);
    setChosenRect(rect);
}

void PlanEditor::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = pictureRect();
    painter.fillRect(place, Qt::white);
    if (!m_picture.isNull())
        painter.drawImage(place, m_picture);
    for (int field = 0; field < int(m_spots.size()); ++field)
        if (field != m_chosen)
            paintSpot(painter, field);
    paintSpot(painter, m_chosen);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(hasFocus() ? Look::accent : Look::past.text, hasFocus() ? 2 : 1));
    painter.drawRect(place.adjusted(1, 1, -1, -1));
}

void PlanEditor::paintSpot(QPainter &painter, int field) const
{
    const QRectF place = placeOf(field);
    if (place.isEmpty())
        return;
    const bool isChosen = field == m_chosen;
    const Look::Tone &tone = isChosen ? Look::paid : Look::booked;
    QColor veil = tone.background;
    veil.setAlphaF(0.35F);
    painter.setPen(QPen(tone.background, isChosen ? 3 : 1.5));
    painter.setBrush(veil);
    painter.drawRect(place);
    const QString name = painter.fontMetrics().elidedText(m_names[std::size_t(field)], Qt::ElideRight,
                                                          int(std::max(0.0, place.width() - 8)));
    const QRectF plate =
        QRectF(place.topLeft() + QPointF(2, 2),
               QSizeF(painter.fontMetrics().horizontalAdvance(name) + 8, painter.fontMetrics().height() + 2))
            .intersected(place);
    painter.fillRect(plate, tone.background);
    painter.setPen(tone.text);
    painter.drawText(plate, Qt::AlignCenter, name);
    if (!isChosen)
        return;
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Look::accent);
    for (const QPointF &corner : cornersOf(place))
        painter.drawRect(QRectF(corner - QPointF(4, 4), QSizeF(8, 8)));
}
