#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace usage {

/// Whether a text is a number as JSON writes it.
[[nodiscard]] bool isJsonNumber(std::string_view token);

/// The number of tokens that a JSON number states, if it is one that can be meant.
[[nodiscard]] std::optional<std::uint64_t> tokenCount(std::string_view token);

} // namespace usage
