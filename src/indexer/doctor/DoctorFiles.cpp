#include "indexer/doctor/Doctor.h"

#include "indexer/terminal/FigureText.h"
#include "usage/history/History.h"
#include "usage/pricing/PriceFile.h"
#include "usage/statistics/StoredTotals.h"

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace indexer {

using namespace usage;

namespace {

namespace fs = std::filesystem;

constexpr const char *countNow = "run kestrelbay-indexer, or start the widget, which does";

/// What keeps the user from using the folder that `about` tells of, if anything.
std::optional<Finding> folderProblem(const fs::path &folder, const struct stat &about)
{
    const std::string name = "the data folder " + folder.native();
    if (!S_ISDIR(about.st_mode)) {
        return Finding {Severity::Problem, name + " is not a folder", "move that file away"};
    }
    if (about.st_uid != ::geteuid()) {
        return Finding {Severity::Problem, name + " belongs to another user",
            fmt::format("sudo chown -R {} '{}'", ::geteuid(), folder.native())};
    }
    if (::access(folder.c_str(), R_OK | W_OK | X_OK) != 0) {
        return Finding {Severity::Problem,
            fmt::format("{} cannot be used: {}", name, std::strerror(errno)),
            fmt::format("chmod u+rwx '{}', or see whether its disk is read-only", folder.native())};
    }
    return std::nullopt;
}

Finding folderFinding(const fs::path &folder, const struct stat &about)
{
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    if (const auto problem = folderProblem(folder, about)) {
        return *problem;
    }
    if ((about.st_mode & others) != 0) {
        return {Severity::Note, "other users can look into the data folder " + folder.native(),
            fmt::format("chmod 700 '{}'", folder.native())};
    }
    return {Severity::Ok, fmt::format("the data folder {} is yours alone", folder.native()), {}};
}

Finding spaceFinding(const fs::path &folder)
{
    constexpr std::uintmax_t scarce = 50'000'000;
    constexpr std::uintmax_t low = 500'000'000;
    std::error_code error;
    const fs::space_info space = fs::space(folder, error);
    if (error) {
        return {Severity::Note, "how full the disk is cannot be told: " + error.message(), {}};
    }
    const std::string text = bytesText(space.available) + " are free on the data folder's disk";
    if (space.available < low) {
        return {space.available < scarce ? Severity::Problem : Severity::Note, text,
            "make room: without it nothing new can be stored"};
    }
    return {Severity::Ok, text, {}};
}

Finding statisticsFinding(const Examined &examined)
{
    const fs::path file = examined.data / "stats.json";
    const StoredTotalsLoad load = readStoredTotals(file);
    if (load.isMissing) {
        return {Severity::Problem, file.native() + " is not there yet", countNow};
    }
    if (!load.totals) {
        return {Severity::Problem, fmt::format("{}: {}", file.native(), load.problem), countNow};
    }
    const auto age = examined.now - load.totals->writtenAt;
    if (age < -std::chrono::minutes {5}) {
        return {
            Severity::Note, file.native() + " is from the future", "check this computer's clock"};
    }
    const std::string text =
        fmt::format("{} was written {} ago", file.native(), spanText(std::max(age, age.zero())));
    // Each new day changes the file.
    return age > std::chrono::days {1} ? Finding {Severity::Note, text, countNow}
                                       : Finding {Severity::Ok, text, {}};
}

Finding pricesFinding(const fs::path &file)
{
    std::error_code ignored;
    if (!fs::exists(fs::symlink_status(file, ignored))) {
        return {Severity::Ok, "the built-in prices are used", {}};
    }
    const std::string problem = loadPrices(file).problem;
    return problem.empty()
        ? Finding {Severity::Ok, file.native() + " is used over the built-in prices", {}}
        : Finding {Severity::Problem, fmt::format("{} is not used: {}", file.native(), problem),
            "correct it (kestrelbay-indexer --help shows the form), or remove it"};
}

} // namespace

Findings examineDataFolder(const Examined &examined)
{
    struct stat about { };
    if (::stat(examined.data.c_str(), &about) != 0) {
        return {{Severity::Problem,
            fmt::format("the data folder {}: {}", examined.data.native(), std::strerror(errno)),
            countNow}};
    }
    Findings findings {folderFinding(examined.data, about)};
    if (S_ISDIR(about.st_mode)) {
        findings.push_back(spaceFinding(examined.data));
    }
    return findings;
}

Findings examineStatistics(const Examined &examined)
{
    return {statisticsFinding(examined), pricesFinding(examined.data / "prices.json")};
}

Findings examineHistory(const Examined &examined)
{
    Findings findings;
    std::error_code ignored;
    if (!fs::exists(examined.data / History::fileName, ignored)) {
        findings.push_back({Severity::Note, "there is no history yet", countNow});
    } else if (examined.historyProblem) {
        const std::string problem = examined.historyProblem();
        findings.push_back(problem.empty() ? Finding {Severity::Ok, "the history is sound", {}}
                                           : Finding {Severity::Problem, "the history: " + problem,
                                               "kestrelbay-indexer backup FILE keeps a copy; then "
                                               "run kestrelbay-indexer, which repairs"
                                               " it"});
    }
    if (examined.newestAnswer && *examined.newestAnswer > examined.now + std::chrono::minutes {5}) {
        findings.push_back({Severity::Problem,
            fmt::format("the newest stored answer is of {}, which lies ahead",
                clockText(*examined.newestAnswer, examined.now)),
            "check this computer's clock and its time zone"});
    }
    return findings;
}

} // namespace indexer
