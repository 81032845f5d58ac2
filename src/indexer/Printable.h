#pragma once

#include <string>
#include <string_view>

namespace indexer {

/// A text from elsewhere without anything that a terminal would obey.
[[nodiscard]] std::string printable(std::string_view text);

} // namespace indexer
