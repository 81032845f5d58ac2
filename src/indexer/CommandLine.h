#pragma once

#include "indexer/report/ReportOptions.h"

#include <filesystem>
#include <string>
#include <variant>

namespace indexer {

/// Read the transcripts and write the statistics file.
struct UpdateOptions { };

enum class StatusFormat { Text, Json, Waybar };

/// Tell what is stored.
struct StatusOptions {
    StatusFormat format = StatusFormat::Text;
};

/// Look for what is wrong.
struct DoctorOptions { };

/// Copy the history.
struct BackupOptions {
    std::filesystem::path file;
};

/// What the program was asked to do.
struct Options {
    std::filesystem::path data;
    bool isDataNamed = false;
    std::filesystem::path claude;
    bool isClaudeNamed = false;    // by the command line or the environment
    bool isClaudeArgument = false; // by the command line
    std::filesystem::path codex;
    bool isCodexNamed = false; // by the command line
    std::variant<UpdateOptions, ReportOptions, StatusOptions, DoctorOptions, BackupOptions> command;
};

/// The program ends at once: with the help, the version, or what was wrong with the command line.
struct EarlyEnd {
    int status = 0;
    std::string text;
};

/// `now` tells what is meant by "today".
[[nodiscard]] std::variant<Options, EarlyEnd> parseCommandLine(
    int count, const char *const *words, TimePoint now);

} // namespace indexer
