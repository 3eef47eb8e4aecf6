#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

/// A field's rectangle on a plan, in the picture's own coordinates. Its edges belong to it.
struct HotSpot
{
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    [[nodiscard]] bool contains(QPointF point) const
    {
        return point.x() >= left && point.x() <= right && point.y() >= top && point.y() <= bottom;
    }
    [[nodiscard]] QRectF rect() const { return {left, top, right - left, bottom - top}; }
};

/// The fields' places on a plan. A field without a rectangle is not on it.
class HotSpots
{
public:
    HotSpots() = default;
    explicit HotSpots(std::vector<std::optional<HotSpot>> spots);
    /// Reads the fields 0 to maxField from the settings' section, "HotSpot" or "HotSpot2".
    HotSpots(const QString &section, int maxField);

    /// The field at a point of the picture, the lower number where two overlap, -1 for none.
    [[nodiscard]] int fieldAt(QPointF point) const;
    /// What the pointer at this point means: the field number, or "X=" and the x coordinate.
    [[nodiscard]] QString textAt(QPointF point) const;
    /// Nothing for a field that is not on the plan, or no field at all.
    [[nodiscard]] std::optional<HotSpot> spot(int field) const;
    [[nodiscard]] int count() const { return int(m_spots.size()); }
    /// The rectangle round all of them; empty when there are none.
    [[nodiscard]] QRectF bounds() const;

private:
    std::vector<std::optional<HotSpot>> m_spots;
};
