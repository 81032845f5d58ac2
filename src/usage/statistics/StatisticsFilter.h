#pragma once

#include "usage/values/LocalCalendar.h"
#include "usage/values/Provider.h"

#include <optional>

namespace usage {

/// Which usage counts; what is not told does not restrict.
struct StatisticsFilter {
    std::optional<Provider> provider;
    std::optional<Day> since; // the first day of the user's calendar
    std::optional<Day> until; // the last one, which counts too

    [[nodiscard]] bool operator==(const StatisticsFilter &) const = default;
    [[nodiscard]] bool admits(Provider of) const { return !provider || *provider == of; }
    [[nodiscard]] bool admits(Day day) const
    {
        return (!since || day >= *since) && (!until || day <= *until);
    }
};

} // namespace usage
