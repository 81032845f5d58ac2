#pragma once

#include "formats/Limit.h"
#include "formats/Limits.h"

#include <string>

/// What is known of Codex's two rate-limit windows, whose lengths are its own to tell.
struct CodexLimits {
    Limits
        limits; ///< `fiveHour` is the shorter window, `sevenDay` the longer, whatever their lengths
    Seconds primaryLength = Limit::fiveHours; ///< of the window in `fiveHour`
    Seconds secondaryLength = Limit::week;    ///< of the window in `sevenDay`
    std::optional<std::string> plan;          ///< the plan's name as the file gives it

    bool operator==(const CodexLimits &) const = default;

    /// Reads the bytes of `codex-limits.json`. A window that makes no
    /// sense is left out; nothing when the bytes are no JSON object.
    [[nodiscard]] static std::optional<CodexLimits> parse(std::string_view bytes);
};
