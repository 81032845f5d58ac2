#include "indexer/doctor/Doctor.h"

#include "usage/files/SafeFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace indexer {

using namespace usage;

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

/// An assistant, as its user knows it.
struct Assistant {
    const char *name;
    const char *option;
    const char *variable;
    const char *inner; // where its transcripts are
};

constexpr Assistant claude {"Claude Code", "--claude", "CLAUDE_CONFIG_DIR", "projects"};
constexpr Assistant codex {"Codex", "--codex", "CODEX_HOME", "sessions"};

Finding folderFinding(const Assistant &assistant, const AssistantPlace &place)
{
    const fs::path inner = place.folder / assistant.inner;
    std::error_code error;
    if (!fs::exists(place.folder, error)) {
        return {place.isNamed ? Severity::Problem : Severity::Note,
            fmt::format("{} has no folder {}", assistant.name, place.folder.native()),
            fmt::format(
                "if it is used and keeps its files elsewhere, name the folder with {} or {}",
                assistant.option, assistant.variable)};
    }
    if (!fs::exists(inner, error) && !error) {
        return {Severity::Note,
            fmt::format("{} has no transcripts in {} yet", assistant.name, inner.native()),
            fmt::format("if there should be some, see whether {} names another folder",
                assistant.variable)};
    }
    if (error || ::access(inner.c_str(), R_OK | X_OK) != 0 || !fs::is_directory(inner, error)) {
        return {Severity::Problem,
            fmt::format("{}'s transcripts in {} cannot be read", assistant.name, inner.native()),
            fmt::format("ls -ld '{}' shows whose they are; you need r and x", inner.native())};
    }
    return {Severity::Ok, fmt::format("{}'s transcripts are in {}", assistant.name, inner.native()),
        {}};
}

/// For how many days Claude Code keeps its transcripts.
Finding cleanupFinding(const fs::path &settings)
{
    constexpr std::size_t largestFile = std::size_t {256} << 10U;
    constexpr double usual = 30;
    constexpr double many = 365;
    constexpr double most = 999'999;
    const FileContent content = readFile(settings, largestFile);
    double days = usual;
    if (content.bytes) {
        const Json held = Json::parse(*content.bytes, nullptr, false, true);
        if (!held.is_object()) {
            return {
                Severity::Note, settings.native() + " is not JSON", "correct it for Claude Code"};
        }
        const auto found = held.find("cleanupPeriodDays");
        days = found != held.end() && found->is_number()
            ? std::clamp(found->get<double>(), 0.0, most)
            : usual;
    } else if (!content.isMissing) {
        return {Severity::Note, content.problem, {}};
    }
    if (days >= many) {
        return {
            Severity::Ok, fmt::format("Claude Code keeps transcripts for {:.0f} days", days), {}};
    }
    return {Severity::Note,
        fmt::format("Claude Code deletes transcripts after {:.0f} days; what was counted stays in"
                    " the history",
            days),
        "run the widget or the indexer more often than that, or raise cleanupPeriodDays in "
            + settings.native()};
}

} // namespace

Findings examineAssistants(const Examined &examined)
{
    Findings findings {
        folderFinding(claude, examined.claude), folderFinding(codex, examined.codex)};
    std::error_code ignored;
    if (fs::exists(examined.claude.folder, ignored)) {
        findings.push_back(cleanupFinding(examined.claude.folder / "settings.json"));
    }
    return findings;
}

} // namespace indexer
