#pragma once

#include "usage/pricing/PriceTable.h"

#include <filesystem>
#include <string>
#include <variant>

namespace usage {

/// Why a price file cannot be used, in words for its author.
struct PriceFileError {
    std::string text;
};

/// Reads a table of the form of prices.json; all of it is right, or none is used.
[[nodiscard]] std::variant<PriceTable, PriceFileError> parsePrices(std::string_view json);

/// The prices that the program knows by itself.
[[nodiscard]] PriceTable builtInPrices();

/// The prices to use, and what was wrong with the user's own, in words, if anything.
struct LoadedPrices {
    PriceTable table;
    std::string problem;
};

/// The prices of the program, and over them those of a file, if there is one and it is right.
[[nodiscard]] LoadedPrices loadPrices(const std::filesystem::path &file);

} // namespace usage
