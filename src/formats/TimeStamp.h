#pragma once

#include "formats/TimePoint.h"

#include <optional>
#include <string>
#include <string_view>

/// Time stamps as the files of the assistants and our own spell them.
namespace TimeStamp {

/// Reads an ISO-8601 internet date-time with a zone ("Z", "+01:00" or "+0100"), with or without
/// fractional seconds, of which milliseconds count. Returns nullopt for anything else.
[[nodiscard]] std::optional<TimePoint> parse(std::string_view text);

/// Reads "2026-11-20" as midnight UTC of that day. Returns nullopt for anything else.
[[nodiscard]] std::optional<TimePoint> parseDate(std::string_view text);

/// Reads seconds since 1970, or milliseconds if `number` is greater than 100,000,000,000. Returns
/// nullopt for what no TimePoint can hold.
[[nodiscard]] std::optional<TimePoint> of(double number);

/// Writes "2026-11-20T09:15:02.417Z".
[[nodiscard]] std::string text(TimePoint moment);

} // namespace TimeStamp
