#pragma once

#include "app/BusinessDay.h"
#include "app/Database.h"

#include <vector>

/// What a field is in the present hour.
enum class FieldState { Free, Booked, Shared, Closed };

/// What the plan shows of a field.
struct FieldStatus
{
    static constexpr int lightsUnknown = -1;

    FieldState state = FieldState::Free;
    QString booker = {};         ///< booker or marker text of the present hour
    int litRows = lightsUnknown; ///< how many of the five light rows are on, as last committed

    bool operator==(const FieldStatus &) const = default;

    /// "Free", "Booked", "Shared", "Closed"
    [[nodiscard]] QString stateText() const;
    /// "Lights 3/5", "Lights off", empty when nothing is known
    [[nodiscard]] QString lightText() const;
};

/// The fields 0 to maxField as they are now: the present hour's rows of tbl_booking and each field's newest row of
/// tbl_light. Outside the working hours all are closed. Throws DbError.
std::vector<FieldStatus> readPlanStatus(Database &database, const QDateTime &now, WorkingHours hours, int maxField);
