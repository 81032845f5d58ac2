#pragma once

#include "usage/limits/LimitReading.h"

#include <filesystem>
#include <optional>
#include <string>

namespace usage {

/// The limit file of Codex: "primary" and "secondary" windows (percent, minutes, resetsAt), with
/// the shorter one first, "updatedAt" and "plan".
[[nodiscard]] std::string limitsJson(const LimitReading &reading);

/// The bytes of that file and the moment that they tell of.
struct WrittenLimits {
    TimePoint time {};
    std::string json;
};

/// Writes that file unless it holds a reading as new. One from well after `now` was made by a clock
/// that went wrong, and is replaced. Says what went wrong, if anything.
[[nodiscard]] std::optional<std::string> writeLimits(
    const std::filesystem::path &file, const WrittenLimits &limits, TimePoint now);

} // namespace usage
