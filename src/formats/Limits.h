#pragma once

#include "formats/Reading.h"

/// What is known of an assistant's two rate-limit windows.
struct Limits {
    std::optional<TimePoint> updatedAt; ///< when the source took the readings
    std::optional<Reading> fiveHour;    ///< the shorter window
    std::optional<Reading> sevenDay;    ///< the longer window
    std::optional<TimePoint> accountAt; ///< when they were taken from the account itself

    bool operator==(const Limits &) const = default;

    /// Reads the bytes of `usage-limits.json`. A window that makes no
    /// sense is left out; nothing when the bytes are no JSON object.
    [[nodiscard]] static std::optional<Limits> parse(std::string_view bytes);

    /// The newer of each window's two readings, each taken whole. Whose account they came from is
    /// not told of a mixture.
    [[nodiscard]] static std::optional<Limits> merge(
        const std::optional<Limits> &first, const std::optional<Limits> &second);
};
