#include "plan/FieldPlate.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

// Pixels. Lights that would be written smaller are left out.
constexpr int smallestText = 8;
constexpr int smallestLightText = 10;

QSizeF sizeOf(const PlatePiece &piece, QFont font)
{
    font.setBold(piece.bold);
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(piece.text) + metrics.height() * 0.7, metrics.height() + 1};
}

void drawFrame(QPainter &painter, const QRectF &place)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Look::ink, 1));
    painter.drawRect(place);
}

} // namespace

FieldPlate::FieldPlate(std::vector<PlatePiece> pieces, const QFont &font, bool sideBySide)
    : m_pieces(std::move(pieces)), m_font(font)
{
    QSizeF whole;
    for (const PlatePiece &piece : m_pieces) {
        const QSizeF own = sizeOf(piece, font);
        m_places.emplace_back(sideBySide ? QPointF(whole.width(), 0) : QPointF(0, whole.height()), own);
        whole = sideBySide ? QSizeF(whole.width() + own.width(), std::max(whole.height(), own.height()))
                           : QSizeF(std::max(whole.width(), own.width()), whole.height() + own.height());
    }
    for (QRectF &place : m_places)
        place.setSize(sideBySide ? QSizeF(place.width(), whole.height()) : QSizeF(whole.width(), place.height()));
}

std::optional<FieldPlate> FieldPlate::largest(const std::vector<PlatePiece> &pieces, QFont font, int smallestPixels,
                                              QSizeF room)
{
    for (int pixels = std::max(QFontInfo(font).pixelSize(), smallestText); pixels >= smallestPixels; --pixels) {
        font.setPixelSize(pixels);
        for (const bool sideBySide : {true, false}) {
            FieldPlate plate(pieces, font, sideBySide);
            if (plate.size().width() <= room.width() && plate.size().height() <= room.height())
                return plate;
        }
    }
    return std::nullopt;
}

FieldPlate FieldPlate::fitting(std::vector<PlatePiece> pieces, const PlatePiece &state, bool withLights,
                               const QFont &font, QSizeF room)
{
    if (withLights) {
        if (const auto plate = largest(pieces, font, smallestLightText, room))
            return *plate;
        pieces.pop_back();
    }
    if (const auto plate = largest(pieces, font, smallestText, room))
        return *plate;
    if (const auto plate = largest({state}, font, smallestText, room))
        return *plate;
    QFont small = font;
    small.setPixelSize(smallestText);
    PlatePiece cut = state;
    cut.text = QFontMetricsF(small).elidedText(cut.text, Qt::ElideRight, room.width() - smallestText);
    return {{cut}, small, true};
}

QSizeF FieldPlate::size() const
{
    return m_places.empty() ? QSizeF() : m_places.front().united(m_places.back()).size();
}

void FieldPlate::draw(QPainter &painter, QPointF corner) const
{
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        const QRectF place = m_places[i].translated(corner);
        QFont font = m_font;
        font.setBold(m_pieces[i].bold);
        painter.setFont(font);
        painter.fillRect(place, m_pieces[i].tone.background);
        painter.setPen(m_pieces[i].tone.text);
        painter.drawText(place, Qt::AlignCenter, m_pieces[i].text);
        if (m_pieces[i].framed)
            drawFrame(painter, place);
    }
    drawFrame(painter, QRectF(corner, size()));
}
