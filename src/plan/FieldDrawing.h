#pragma once

#include "plan/PlanStatus.h"

#include <QRectF>

#include <optional>

class QFont;
class QPainter;

/// A field as the plan draws it.
struct DrawnField
{
    QRectF place;                           ///< in pixels
    QRectF plateRoom;                       ///< where the plate with its state may stand
    QString name = {};                      ///< stands on the plate of a compact plan
    std::optional<FieldStatus> status = {}; ///< none when nothing is known
    bool isCompact = false;                 ///< the picture's own lettering cannot be read
};

/// Tints the field by its state, frames it, and says the state and the lights on a plate.
void drawField(QPainter &painter, const DrawnField &field, const QFont &font);

/// What is round the field that is pointed at, and round the selected one.
void drawPointed(QPainter &painter, const QRectF &place);
void drawSelected(QPainter &painter, const QRectF &place, bool isCompact);
