#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace indexer {

/// What the place that text is printed to can show.
struct Terminal {
    bool isTerminal = false;
    bool hasColour = false;
    std::size_t width = 0; // columns; 0 when lines may be of any length
};

/// Looks up a variable of the environment; null when it is not set.
using Environment = std::function<const char *(const char *)>;

/// What a file descriptor leads to. The variables NO_COLOR, TERM and COLUMNS are obeyed.
[[nodiscard]] Terminal terminalOf(int descriptor, const Environment &environment);
/// The same with the program's own environment.
[[nodiscard]] Terminal terminalOf(int descriptor);

/// How text is set off.
enum class Ink { Plain, Bold, Dim, Yellow, Red };

/// The text in that ink where there is colour, else unchanged.
[[nodiscard]] std::string inked(std::string_view text, Ink ink, const Terminal &terminal);

} // namespace indexer
