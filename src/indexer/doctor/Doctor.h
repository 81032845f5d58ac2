#pragma once

#include "formats/TimeStamp.h"
#include "indexer/doctor/Finding.h"
#include "indexer/terminal/Terminal.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace indexer {

/// An assistant's folder.
struct AssistantPlace {
    std::filesystem::path folder;
    bool isNamed = false; // by the command line or the environment, so it must be there
};

/// What is to be examined.
struct Examined {
    std::filesystem::path data;
    AssistantPlace claude;
    AssistantPlace codex;
    std::filesystem::path home; // as the environment tells it
    std::string path;           // where programs are looked for, as PATH has it
    TimePoint now {};
    std::optional<TimePoint> newestAnswer; // that is stored
    /// Says what is wrong with the history, empty when nothing is.
    std::function<std::string()> historyProblem = nullptr;
};

/// Looks at everything, in the order in which it is to be told. Nothing is changed, no credentials
/// are opened.
[[nodiscard]] Findings examine(const Examined &examined);

// The parts of it.
[[nodiscard]] Findings examineDataFolder(const Examined &examined);
[[nodiscard]] Findings examineStatistics(const Examined &examined);
[[nodiscard]] Findings examineHistory(const Examined &examined);
[[nodiscard]] Findings examinePrograms(const Examined &examined);
[[nodiscard]] Findings examineAssistants(const Examined &examined);

[[nodiscard]] bool hasProblem(const Findings &findings);

/// A line for each finding, and one for what to do about it.
[[nodiscard]] std::string findingsText(const Findings &findings, const Terminal &terminal);

} // namespace indexer
