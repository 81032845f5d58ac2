#pragma once

#include <string_view>

namespace indexer {

/// The content of prices.json, put into the program by the build.
extern const std::string_view builtInPricesJson;

} // namespace indexer
