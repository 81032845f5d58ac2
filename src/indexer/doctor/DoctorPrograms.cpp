#include "indexer/doctor/Doctor.h"

#include "indexer/doctor/ChildProcess.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <unistd.h>
#include <vector>

namespace indexer {

namespace {

namespace fs = std::filesystem;

constexpr int leastNode = 18;
constexpr const char *installNode =
    "install Node.js 18 or later: the widget runs the indexer by it";
constexpr const char *fill = "start the widget with kestrelbay-launch, which puts it there";

/// Of "v18.20.4\n", 18.
std::optional<int> majorVersion(std::string_view text)
{
    int major = 0;
    if (!text.starts_with('v')) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(text.data() + 1, text.data() + text.size(), major);
    return error == std::errc {} ? std::optional(major) : std::nullopt;
}

/// PATH, and behind it the places in the home where the widget looks too. It starts from a login
/// shell's PATH, which may be another one.
std::string searchPath(const fs::path &home, std::string path)
{
    std::vector<fs::path> versions;
    std::error_code ignored;
    fs::directory_iterator version(home / ".nvm/versions/node", ignored);
    for (; version != fs::directory_iterator(); version.increment(ignored)) {
        versions.push_back(version->path() / "bin");
    }
    // As the widget has it, the last by name first.
    std::sort(versions.rbegin(), versions.rend());
    std::vector<fs::path> more {home / ".volta/bin", home / ".local/share/fnm/aliases/default/bin"};
    more.insert(more.end(), versions.begin(), versions.end());
    for (const fs::path &folder : more) {
        path += ':' + folder.native();
    }
    return path;
}

Finding nodeFinding(const std::string &path)
{
    constexpr auto patience = std::chrono::seconds {5};
    const auto node = findProgram("node", path);
    if (!node) {
        return {Severity::Problem, "node is neither in PATH nor where it usually is", installNode};
    }
    const std::string version =
        programOutput(*node, {"--version"}, patience).value_or(std::string());
    const auto major = majorVersion(version);
    if (!major) {
        return {Severity::Problem, node->native() + " does not tell its version", installNode};
    }
    const std::string text =
        fmt::format("{} is {}", node->native(), version.substr(0, version.find('\n')));
    return *major < leastNode
        ? Finding {Severity::Problem, text + ", which is too old", installNode}
        : Finding {Severity::Ok, text, {}};
}

Finding companionFinding(const fs::path &file, bool isProgram)
{
    std::error_code error;
    const auto size = fs::file_size(file, error);
    if (error || size == 0) {
        return {Severity::Problem,
            fmt::format("{} {}", file.native(), error ? "is missing" : "is empty"), fill};
    }
    if (::access(file.c_str(), isProgram ? R_OK | X_OK : R_OK) != 0) {
        return {Severity::Problem,
            fmt::format("{} may not be {}", file.native(), isProgram ? "executed" : "read"),
            fmt::format("chmod u+r{} '{}'", isProgram ? "x" : "", file.native())};
    }
    return {Severity::Ok, file.native() + " is there", {}};
}

} // namespace

Findings examinePrograms(const Examined &examined)
{
    return {nodeFinding(searchPath(examined.home, examined.path)),
        companionFinding(examined.data / "usage-stats.mjs", false),
        companionFinding(examined.data / "kestrelbay-indexer", true)};
}

} // namespace indexer
