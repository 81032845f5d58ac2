#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace usage {

/// Whose assistant was used.
enum class Provider : std::uint8_t { Claude, Codex };

/// As the statistics file names them, by number.
constexpr std::array<std::string_view, 2> providerNames {"claude", "codex"};

} // namespace usage
