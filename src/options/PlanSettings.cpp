#include "options/PlanSettings.h"

#include "options/SettingsDraft.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// "30, 28, 510, 92"; 1 is what the file has for none.
QString textOf(const std::optional<HotSpot> &spot)
{
    if (!spot)
        return u"1"_s;
    QStringList corners;
    for (const double corner : {spot->left, spot->top, spot->right, spot->bottom})
        corners << QString::number(corner);
    return corners.join(u", "_s);
}

std::array<QString, 5> textsOf(const PicturePlacement &picture)
{
    return {picture.image, QString::number(picture.top), QString::number(picture.left), QString::number(picture.height),
            QString::number(picture.width)};
}

const std::array<QString, 5> keys{u"Image"_s, u"Top"_s, u"Left"_s, u"Height"_s, u"Width"_s};

} // namespace

PlanSettings PlanSettings::read(const QString &section, const QString &spotSection, int fields)
{
    PlanSettings plan{section, spotSection};
    try {
        plan.picture = readPicturePlacement(section);
    } catch (const SettingError &) {
        plan.picture.image = ReadSetting(section, keys.front(), {});
    }
    const HotSpots spots(spotSection, fields - 1);
    plan.spots.reserve(std::size_t(fields));
    for (int field = 0; field < fields; ++field)
        plan.spots.push_back(spots.spot(field));
    return plan;
}

bool PlanSettings::sameAs(const PlanSettings &other) const
{
    if (textsOf(picture) != textsOf(other.picture) || spots.size() != other.spots.size())
        return false;
    for (std::size_t i = 0; i < spots.size(); ++i)
        if (textOf(spots[i]) != textOf(other.spots[i]))
            return false;
    return true;
}

void PlanSettings::addTo(SettingsDraft &draft, const PlanSettings &before, const QString &name,
                         const std::vector<QString> &fieldNames) const
{
    const auto now = textsOf(picture);
    const auto old = textsOf(before.picture);
    if (now != old) {
        for (std::size_t i = 0; i < keys.size(); ++i)
            draft.set(section, keys.at(i), now.at(i));
        draft.tell(name, old.front() + u" at "_s + QStringList(old.begin() + 1, old.end()).join(u' '),
                   now.front() + u" at "_s + QStringList(now.begin() + 1, now.end()).join(u' '));
    }
    const auto at = [](const auto &list, std::size_t i) { return i < list.size() ? textOf(list[i]) : textOf({}); };
    for (std::size_t i = 0; i < std::max(spots.size(), before.spots.size()); ++i) {
        const QString was = at(before.spots, i);
        const QString is = at(spots, i);
        if (was == is)
            continue;
        draft.set(spotSection, u"Coord%1"_s.arg(i), is);
        draft.tell(name + u" place of "_s + (i < fieldNames.size() ? fieldNames[i] : QString::number(i + 1)),
                   was == u"1" ? QString() : was, is == u"1" ? QString() : is);
    }
}
