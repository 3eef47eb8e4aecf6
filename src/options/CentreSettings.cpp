#include "options/CentreSettings.h"

#include "app/Settings.h"
#include "options/SettingsDraft.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace {

const QString systemSection = u"System"_s;

QString systemText(const QString &key)
{
    return ReadSetting(systemSection, key, {});
}

int figure(const QString &key, int without)
{
    bool isNumber = false;
    const int number = systemText(key).toInt(&isNumber);
    return isNumber ? number : without;
}

QString numbered(const QString &key, int number)
{
    return key + QString::number(number);
}

// address1, address2 … up to the first one missing.
QStringList readLines(const QString &section, const QString &key)
{
    QStringList lines;
    for (QString line; !(line = ReadSetting(section, numbered(key, int(lines.size()) + 1), {})).isEmpty();)
        lines << line;
    return lines;
}

// What the old list had more is emptied.
void setLines(SettingsDraft &draft, const QString &section, const QString &key, const QStringList &lines,
              qsizetype before)
{
    for (int i = 0; i < std::max(lines.size(), before); ++i)
        draft.set(section, numbered(key, i + 1), lines.value(i));
}

QString refusalOfLines(const QStringList &lines, const QString &what)
{
    return lines.contains(QString())
               ? u"An empty line would end the %1 lines of the receipts. Take it out, or put a point there."_s.arg(what)
               : QString();
}

bool hasInside(const std::vector<CentreSettings::Pair> &pairs, int whole, int field)
{
    std::set<int> inside{whole};
    for (std::size_t before = 0; before != inside.size();) {
        before = inside.size();
        for (const auto &pair : pairs)
            if (inside.contains(pair.whole))
                inside.insert(pair.part);
    }
    return inside.contains(field);
}

QString hoursInWords(const CentreSettings &settings)
{
    return QString::number(settings.firstHour) + u'-' + QString::number(settings.lastHour);
}

} // namespace

CentreSettings CentreSettings::read()
{
    CentreSettings settings;
    const int most = std::clamp(figure(u"fields"_s, 1), 1, mostFields);
    for (int i = 0; i < most; ++i) {
        const QString name = systemText(numbered(u"pitch"_s, i));
        if (name.isEmpty() || name == numbered(u"pitch"_s, i))
            break;
        const QString display = systemText(numbered(u"display"_s, i));
        settings.fields.push_back({name, display.isEmpty() ? name : display});
    }
    settings.firstHour = figure(u"hour_start"_s, settings.firstHour);
    settings.lastHour = figure(u"hour_end"_s, settings.lastHour);
    for (std::size_t i = 0; i < settings.fields.size(); ++i) {
        const QString entry = ReadSetting(u"Shared"_s, numbered(u"Shared"_s, int(i)), {});
        const QStringList numbers = entry.split(u'&');
        if (numbers.size() != 2)
            break;
        settings.pairs.push_back({numbers[0].trimmed().toInt(), numbers[1].trimmed().toInt()});
    }
    settings.address = readLines(u"Address"_s, u"address"_s);
    settings.contact = readLines(u"Contact"_s, u"contact"_s);
    settings.counters = figure(u"counters"_s, 1);
    settings.specialGroups = figure(u"special_groups"_s, mostSpecialGroups);
    return settings;
}

QString CentreSettings::nameOf(int field) const
{
    const auto index = std::size_t(field);
    const QString name = index < fields.size() ? fields[index].display : QString();
    return name.isEmpty() ? u"Field %1"_s.arg(field + 1) : name;
}

std::vector<QString> CentreSettings::names() const
{
    std::vector<QString> names;
    names.reserve(fields.size());
    for (int i = 0; i < int(fields.size()); ++i)
        names.push_back(nameOf(i));
    return names;
}

QString CentreSettings::pairsInWords() const
{
    QStringList words;
    for (const Pair &pair : pairs)
        words << nameOf(pair.whole) + u" & "_s + nameOf(pair.part);
    return words.join(u", "_s);
}

QString CentreSettings::refusalOfPair(Pair pair) const
{
    const int count = int(fields.size());
    if (pair.whole < 0 || pair.part < 0 || pair.whole >= count || pair.part >= count)
        return u"A pair needs two fields of the list."_s;
    if (pair.whole == pair.part)
        return u"%1 cannot be a part of itself."_s.arg(nameOf(pair.whole));
    if (std::ranges::find(pairs, pair) != pairs.end())
        return u"%1 is a part of %2 already."_s.arg(nameOf(pair.part), nameOf(pair.whole));
    if (hasInside(pairs, pair.part, pair.whole))
        return u"%1 lies within %2 already, so it cannot be the whole of it."_s.arg(nameOf(pair.whole),
                                                                                    nameOf(pair.part));
    if (pairs.size() >= fields.size())
        return u"There can be no more pairs than fields (%1)."_s.arg(count);
    return {};
}

QString CentreSettings::refusal() const
{
    std::set<QString> seen;
    for (int i = 0; i < int(fields.size()); ++i) {
        const auto &[name, display] = fields[std::size_t(i)];
        if (name.isEmpty() || display.isEmpty())
            return u"Field %1 needs both a short name and a name that staff read."_s.arg(i + 1);
        if (name == numbered(u"pitch"_s, i))
            return u"\"%1\" counts as no name for this field: the list would end before it."_s.arg(name);
        if ((name + display).contains(u'\\'))
            return u"The name of field %1 cannot have a backslash in it."_s.arg(i + 1);
        if (!seen.insert(display).second)
            return u"Two fields are called \"%1\". Staff could not tell them apart."_s.arg(display);
    }
    if (lastHour >= firstHour)
        return u"The last hour after midnight must be before %1:00, when the next day begins."_s.arg(firstHour);
    CentreSettings sofar{.fields = fields};
    for (const Pair &pair : pairs) {
        if (const QString reason = sofar.refusalOfPair(pair); !reason.isEmpty())
            return reason;
        sofar.pairs.push_back(pair);
    }
    return refusalOfLines(address, u"address"_s) + refusalOfLines(contact, u"contact"_s);
}

void CentreSettings::addTo(SettingsDraft &draft, const CentreSettings &before) const
{
    const int count = int(fields.size());
    if (fields != before.fields)
        draft.set(systemSection, u"fields"_s, QString::number(std::max(1, count)));
    for (int i = 0; i < std::max(count, int(before.fields.size())); ++i) {
        const auto at = [i](const auto &list) { return std::size_t(i) < list.size() ? list[std::size_t(i)] : Field(); };
        const Field now = at(fields);
        const Field old = at(before.fields);
        if (now == old)
            continue;
        draft.set(systemSection, numbered(u"pitch"_s, i), now.name);
        draft.set(systemSection, numbered(u"display"_s, i), now.display);
        draft.tell(u"field %1"_s.arg(i + 1), old.name.isEmpty() ? QString() : old.name + u' ' + old.display,
                   now.name.isEmpty() ? QString() : now.name + u' ' + now.display);
    }
    if (hoursInWords(*this) != hoursInWords(before)) {
        draft.set(systemSection, u"hour_start"_s, QString::number(firstHour));
        draft.set(systemSection, u"hour_end"_s, QString::number(lastHour));
        draft.tell(u"working hours"_s, hoursInWords(before), hoursInWords(*this));
    }
    if (pairs != before.pairs) {
        for (std::size_t i = 0; i < std::max(pairs.size(), before.pairs.size()); ++i)
            draft.set(u"Shared"_s, numbered(u"Shared"_s, int(i)),
                      i < pairs.size() ? u"%1&%2"_s.arg(pairs[i].whole).arg(pairs[i].part) : QString());
        draft.tell(u"shared pairs"_s, before.pairsInWords(), pairsInWords());
    }
    setLines(draft, u"Address"_s, u"address"_s, address, before.address.size());
    setLines(draft, u"Contact"_s, u"contact"_s, contact, before.contact.size());
    draft.tell(u"address"_s, before.address.join(u" / "_s), address.join(u" / "_s));
    draft.tell(u"contact"_s, before.contact.join(u" / "_s), contact.join(u" / "_s));
    const auto setFigure = [&](const QString &key, const QString &name, int old, int now) {
        if (old != now)
            draft.set(systemSection, key, QString::number(now));
        draft.tell(name, QString::number(old), QString::number(now));
    };
    setFigure(u"counters"_s, u"number of counters"_s, before.counters, counters);
    setFigure(u"special_groups"_s, u"special groups"_s, before.specialGroups, specialGroups);
}
