#include "plan/HotSpots.h"

#include "app/Settings.h"

using namespace Qt::StringLiterals;

HotSpots::HotSpots(std::vector<std::optional<HotSpot>> spots) : m_spots(std::move(spots)) {}

HotSpots::HotSpots(const QString &section, int maxField)
{
    for (int field = 0; field <= maxField; ++field) {
        const auto corners = readHotSpot(section, field);
        m_spots.push_back(corners ? std::optional(HotSpot{(*corners)[0], (*corners)[1], (*corners)[2], (*corners)[3]})
                                  : std::nullopt);
    }
}

int HotSpots::fieldAt(QPointF point) const
{
    for (int field = 0; field < count(); ++field) {
        if (const auto place = spot(field); place && place->contains(point))
            return field;
    }
    return -1;
}

QString HotSpots::textAt(QPointF point) const
{
    const int field = fieldAt(point);
    return field >= 0 ? QString::number(field) : u"X="_s + QString::number(qRound64(point.x()));
}

std::optional<HotSpot> HotSpots::spot(int field) const
{
    return field >= 0 && field < count() ? m_spots[std::size_t(field)] : std::nullopt;
}

QRectF HotSpots::bounds() const
{
    QRectF all;
    for (const auto &place : m_spots) {
        if (place)
            all = all.united(place->rect());
    }
    return all;
}
