#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace indexer {

/// A moment in UTC, as exact as the transcripts tell it.
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// Reads "2026-11-20T09:15:02.417Z" or the same with an offset; a time without zone is no moment.
[[nodiscard]] std::optional<TimePoint> parseMoment(std::string_view text);

/// Takes a number of seconds or, if that would be far away, of milliseconds since 1970.
[[nodiscard]] std::optional<TimePoint> momentOfNumber(double number);

/// Reads "2026-11-20" as that day's midnight in UTC.
[[nodiscard]] std::optional<TimePoint> parseDate(std::string_view text);

/// Writes "2026-11-20T09:15:02.417Z".
[[nodiscard]] std::string momentText(TimePoint moment);

} // namespace indexer
