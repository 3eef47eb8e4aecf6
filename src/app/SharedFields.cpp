#include "app/SharedFields.h"

#include <algorithm>

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
    const std::set<int> own = inside(field);
    std::set<int> found;
    for (const Pair &pair : m_pairs)
        for (const int other : {pair.whole, pair.part}) {
            const std::set<int> theirs = inside(other);
            if (other != field && std::any_of(theirs.cbegin(), theirs.cend(), [&](int f) { return own.contains(f); }))
                found.insert(other);
        }
    return {found.cbegin(), found.cend()};
}

std::set<int> SharedFields::inside(int field) const
{
    std::set<int> found{field};
    for (std::size_t before = 0; before != found.size();) {
        before = found.size();
        for (const Pair &pair : m_pairs)
            if (found.contains(pair.whole))
                found.insert(pair.part);
    }
    return found;
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
