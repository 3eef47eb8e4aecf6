#pragma once

#include "app/Settings.h"

#include <set>
#include <vector>

/// The pairs "A&B" of the settings' section "Shared": a booking on A takes B in full, a booking on B takes a part of A.
/// The list ends at the first empty entry.
class SharedFields
{
public:
    /// Throws SettingError for an entry that is no pair of two different fields in use.
    explicit SharedFields(const AppSettings &settings);

    /// The B of every pair whose A is this field, in list order.
    [[nodiscard]] std::vector<int> partners(int field) const;
    /// The A of the first pair whose B is this field, -1 when there is none.
    [[nodiscard]] int parent(int field) const;

    /// Every other field that has ground in common with this one: its wholes and their wholes, its parts and theirs,
    /// and the wholes of those. Two parts of one whole have none in common. Ascending.
    [[nodiscard]] std::vector<int> onSameGround(int field) const;
    /// One number for all fields that pairs connect, the lowest of them; -1 for a field that shares nothing.
    [[nodiscard]] int ground(int field) const;

private:
    struct Pair
    {
        int whole;
        int part;
    };

    /// The field and its parts and theirs.
    [[nodiscard]] std::set<int> inside(int field) const;

    std::vector<Pair> m_pairs;
};
