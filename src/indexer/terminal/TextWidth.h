#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace indexer {

/// The columns that a text takes on a terminal.
[[nodiscard]] std::size_t widthOf(std::string_view text);

/// As much of a text as fits into so many columns, with "…" behind it when there was more.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t columns);

} // namespace indexer
