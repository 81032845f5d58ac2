#include "indexer/StoredTotals.h"

#include "indexer/SafeFile.h"

#include <cmath>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace indexer {

namespace {

using Json = nlohmann::json;

constexpr std::size_t largestFile = std::size_t {256} << 20U;

std::optional<double> costIn(const Json &totals, const char *span)
{
    const auto found = totals.find(span);
    if (found == totals.end() || !found->is_object()) {
        return std::nullopt;
    }
    const auto cost = found->find("cost");
    if (cost == found->end() || !cost->is_number()) {
        return std::nullopt;
    }
    const auto dollars = cost->get<double>();
    return std::isfinite(dollars) ? std::optional(dollars) : std::nullopt;
}

TimePoint modified(const std::filesystem::path &file)
{
    using namespace std::chrono;
    struct stat about { };
    return ::stat(file.c_str(), &about) == 0 ? TimePoint(seconds(about.st_mtim.tv_sec))
                                             : TimePoint();
}

} // namespace

StoredTotalsLoad readStoredTotals(const std::filesystem::path &statsFile)
{
    const FileContent content = readFile(statsFile, largestFile);
    if (!content.bytes) {
        return {{}, content.isMissing, content.problem};
    }
    const Json stats = Json::parse(*content.bytes, nullptr, false);
    const auto totals = stats.is_object() ? stats.find("totals") : stats.end();
    if (!stats.is_object() || totals == stats.end() || !totals->is_object()) {
        return {{}, false, stats.is_discarded() ? "not JSON" : "no statistics"};
    }
    return {.totals = StoredTotals {.writtenAt = modified(statsFile),
                .today = costIn(*totals, "today"),
                .week = costIn(*totals, "week"),
                .month = costIn(*totals, "month")},
        .isMissing = false,
        .problem = {}};
}

} // namespace indexer
