#pragma once

#include <string_view>

namespace usage {

/// The content of prices.json, put into the program by the build.
extern const std::string_view builtInPricesJson;

} // namespace usage
