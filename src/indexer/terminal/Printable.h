#pragma once

#include <string>
#include <string_view>

namespace indexer {

/// A text from elsewhere without anything that a terminal would obey, or that would show it in
/// another order than it has.
[[nodiscard]] std::string printable(std::string_view text);

} // namespace indexer
