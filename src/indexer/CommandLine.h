#pragma once

#include "indexer/Report.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace indexer {

/// What the program was asked to do.
struct Options {
    std::filesystem::path data;
    std::filesystem::path claude;
    bool isClaudeNamed = false; // by the command line or the environment
    std::filesystem::path codex;
    bool isCodexNamed = false;        // likewise
    std::optional<ReportKind> report; // nothing: write the statistics file
    bool asJson = false;
};

/// The program ends at once: with the help, the version, or what was wrong with the command line.
struct EarlyEnd {
    int status = 0;
    std::string text;
};

[[nodiscard]] std::variant<Options, EarlyEnd> parseCommandLine(int count, const char *const *words);

} // namespace indexer
