#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class SettingsDraft;

/// What the settings file says of the whole centre, as people enter it.
struct CentreSettings
{
    struct Field
    {
        QString name;    ///< short
        QString display; ///< what staff read

        friend bool operator==(const Field &, const Field &) = default;
    };
    /// A booking on the whole takes the part in full. Fields count from 0.
    struct Pair
    {
        int whole = 0;
        int part = 0;

        friend bool operator==(const Pair &, const Pair &) = default;
    };
    static constexpr int mostFields = 16;
    static constexpr int mostSpecialGroups = 5;

    std::vector<Field> fields = {};
    int firstHour = 8;
    int lastHour = 0;
    std::vector<Pair> pairs = {};
    QStringList address = {}; ///< lines at the head of a receipt
    QStringList contact = {};
    int counters = 1;
    int specialGroups = mostSpecialGroups;

    friend bool operator==(const CentreSettings &, const CentreSettings &) = default;

    /// As the file says now; what is wrong in it is left out.
    static CentreSettings read();
    /// "North A", or "Field 2" while it has no name.
    [[nodiscard]] QString nameOf(int field) const;
    [[nodiscard]] std::vector<QString> names() const;
    /// "North pitch & North A, …"
    [[nodiscard]] QString pairsInWords() const;
    /// What would make no sense, in words; empty when all of it does.
    [[nodiscard]] QString refusal() const;
    /// Why no such pair can be added; empty when it can.
    [[nodiscard]] QString refusalOfPair(Pair pair) const;
    /// Puts what differs from `before` into a draft, with its lines for the log.
    void addTo(SettingsDraft &draft, const CentreSettings &before) const;
};
