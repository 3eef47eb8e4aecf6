#pragma once

#include "look/Look.h"

#include <QFont>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

/// One text of a plate, on its own ground.
struct PlatePiece
{
    QString text;
    Look::Tone tone;
    bool bold = false;
    bool framed = false;
};

/// The plate on a field of the plan: a few short texts, side by side or one below the other, as large as they fit.
class FieldPlate
{
public:
    /// What fits into the room (pixels): all pieces, then all but the lights (they come last), then the state alone,
    /// cut where it must be. No larger than the font.
    static FieldPlate fitting(std::vector<PlatePiece> pieces, const PlatePiece &state, bool withLights,
                              const QFont &font, QSizeF room);

    [[nodiscard]] QSizeF size() const;
    void draw(QPainter &painter, QPointF corner) const;

private:
    FieldPlate(std::vector<PlatePiece> pieces, const QFont &font, bool sideBySide);
    static std::optional<FieldPlate> largest(const std::vector<PlatePiece> &pieces, QFont font, int smallestPixels,
                                             QSizeF room);

    std::vector<PlatePiece> m_pieces;
    QFont m_font;
    std::vector<QRectF> m_places; // of the pieces, from the origin
};
