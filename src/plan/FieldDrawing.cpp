#include "plan/FieldDrawing.h"

#include "look/Look.h"
#include "plan/FieldPlate.h"

#include <QFontInfo>
#include <QPainter>

namespace {

constexpr Look::Tone lit{{255, 205, 56}, {64, 47, 0}};
constexpr Look::Tone unlit{{74, 82, 88}, {255, 255, 255}};

Look::Tone toneOf(FieldState state)
{
    switch (state) {
    case FieldState::Free:
        return Look::free;
    case FieldState::Booked:
        return Look::booked;
    case FieldState::Shared:
        return Look::shared;
    case FieldState::Closed:
        break;
    }
    return Look::past;
}

void drawPlate(QPainter &painter, const DrawnField &field, const QFont &font)
{
    const bool known = field.status.has_value();
    const FieldStatus status = field.status.value_or(FieldStatus{});
    const Look::Tone tone = toneOf(status.state);
    std::vector<PlatePiece> pieces;
    if (field.isCompact)
        pieces.push_back({field.name, tone, true});
    const PlatePiece state{status.stateText(), tone, false};
    if (known)
        pieces.push_back(state);
    const bool withLights = known && !status.lightText().isEmpty();
    if (withLights)
        pieces.push_back({status.lightText(), status.litRows > 0 ? lit : unlit, false, true});
    if (pieces.empty())
        return;
    const QRectF &room = field.plateRoom;
    QFont letters = font;
    letters.setPixelSize(int(QFontInfo(font).pixelSize() * (field.isCompact ? 0.85 : 1.0)));
    const auto plate = FieldPlate::fitting(pieces, known ? state : pieces.front(), withLights, letters, room.size());
    plate.draw(painter, field.isCompact ? room.topLeft() : room.bottomLeft() - QPointF(0, plate.size().height()));
}

} // namespace

void drawField(QPainter &painter, const DrawnField &field, const QFont &font)
{
    if (field.status) {
        // Multiplied, the tone leaves the picture's own lettering as dark as it is.
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.setOpacity(0.65);
        painter.fillRect(field.place, toneOf(field.status->state).background);
        painter.setOpacity(1);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    painter.setPen(QPen(Look::ink, field.status ? 1.0 : 0.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(field.place);
    drawPlate(painter, field, font);
}

void drawPointed(QPainter &painter, const QRectF &place)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Look::ink, 2, Qt::DashLine));
    painter.drawRect(place.adjusted(-1, -1, 1, 1));
}

void drawSelected(QPainter &painter, const QRectF &place, bool isCompact)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 6));
    painter.drawRect(place);
    painter.setPen(QPen(Look::accent, 3));
    painter.drawRect(place);
    const QPointF tick = isCompact ? place.bottomLeft() + QPointF(2, -2) : place.bottomRight() - QPointF(2, 2);
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(Look::accent);
    painter.drawEllipse(tick, 9, 9);
    painter.drawPolyline(QPolygonF{tick + QPointF(-4, 0), tick + QPointF(-1, 3), tick + QPointF(4, -3)});
}
