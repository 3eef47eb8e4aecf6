#include "app/SharedFields.h"

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

SharedFields::SharedFields(const AppSettings &settings)
{
    for (std::size_t i = 0; i < settings.SharedFields.size() && !settings.SharedFields[i].isEmpty(); ++i) {
        const QString &entry = settings.SharedFields[i];
        bool wholeOk = false;
        bool partOk = false;
        const Pair pair{entry.section(u'&', 0, 0).trimmed().toInt(&wholeOk),
                        entry.section(u'&', 1).trimmed().toInt(&partOk)};
        const auto isField = [&settings](int number) { return number >= 0 && number <= settings.MaxFieldIndex; };
        if (!wholeOk || !partOk || !isField(pair.whole) || !isField(pair.part) || pair.whole == pair.part)
            throw SettingError(u"Shared"_s, u"Shared"_s + QString::number(i), entry,
                               u"two different field numbers from 0 to %1 joined by \"&\", for example 0&1"_s.arg(
                                   QString::number(settings.MaxFieldIndex)));
        m_pairs.push_back(pair);
    }
}

std::vector<int> SharedFields::partners(int field) const
{
    std::vector<int> found;
    for (const Pair &pair : m_pairs)
        if (pair.whole == field)
            found.push_back(pair.part);
    return found;
}

int SharedFields::parent(int field) const
{
    const auto pair = std::find_if(m_pairs.cbegin(), m_pairs.cend(), [field](Pair p) { return p.part == field; });
    return pair == m_pairs.cend() ? -1 : pair->whole;
}

std::vector<int> SharedFields::onSameGround(int field) const
{
    std::set<int> found;
    const auto follow = [&](int Pair::*from, int Pair::*to) {
        std::vector<int> next{field};
        while (!next.empty()) {
            const int here = next.back();
            next.pop_back();
            for (const Pair &pair : m_pairs)
                if (pair.*from == here && pair.*to != field && found.insert(pair.*to).second)
                    next.push_back(pair.*to);
        }
    };
    follow(&Pair::whole, &Pair::part);
    const std::set<int> parts = std::exchange(found, {});
    follow(&Pair::part, &Pair::whole);
    found.insert(parts.cbegin(), parts.cend());
    return {found.cbegin(), found.cend()};
}

int SharedFields::ground(int field) const
{
    std::set<int> connected{field};
    for (std::size_t before = 0; before != connected.size();) {
        before = connected.size();
        for (const Pair &pair : m_pairs) {
            if (connected.contains(pair.whole) || connected.contains(pair.part))
                connected.insert({pair.whole, pair.part});
        }
    }
    return connected.size() > 1 ? *connected.cbegin() : -1;
}
