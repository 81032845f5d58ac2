// The limit file that the indexer finds in the place of its own.

#include "usage/limits/LimitsFile.h"
#include "formats/Folders.h"
#include "require.h"
#include "requireOwnHome.h"
#include "usage/files/SafeFile.h"

#include <fstream>
#include <nlohmann/json.hpp>

using namespace usage;

namespace {

constexpr TimePoint now =
    std::chrono::sys_days {std::chrono::year {2026} / std::chrono::November / 21};

WrittenLimits limitsAt(TimePoint time)
{
    return {time, limitsJson({.time = time, .plan = "plus", .windows = {{42.5, 300, now}}})};
}

/// Whether a file told a time from which on ours is no news, and which can be.
bool isRightfullyKept(std::string_view input, TimePoint ours)
{
    const auto json = nlohmann::json::parse(input);
    const auto told = TimeStamp::parse(json.at("updatedAt").get_ref<const std::string &>());
    return told && *told >= ours && *told <= now + limitsTolerance;
}

std::filesystem::path file()
{
    requireOwnHome();
    const std::filesystem::path folder = Folders::data();
    require(!makeFolder(folder));
    return folder / "codex-limits.json";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static const std::filesystem::path name = file();
    const std::string_view input(data, size);
    std::ofstream(name, std::ios::binary) << input;

    // No file is as new as a reading that lies further ahead than any may.
    const bool isNewest = size % 2 == 0;
    const WrittenLimits limits =
        limitsAt(isNewest ? now + limitsTolerance + std::chrono::milliseconds(1)
                          : now - std::chrono::hours(1));
    require(!writeLimits(name, limits, now));
    const std::string held = readFile(name, size + limits.json.size()).bytes.value();
    require(held == limits.json || (held == input && isRightfullyKept(input, limits.time)));
    require(!writeLimits(name, limits, now));
    require(readFile(name, held.size()).bytes == held);
    return 0;
}
