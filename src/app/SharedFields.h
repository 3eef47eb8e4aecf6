#pragma once

#include "app/Settings.h"

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

private:
    struct Pair
    {
        int whole;
        int part;
    };
    std::vector<Pair> m_pairs;
};
