#include "indexer/report/Waybar.h"

#include "indexer/report/LimitsText.h"
#include "indexer/terminal/FigureText.h"
#include "usage/statistics/StoredTotals.h"
#include "usage/values/LocalCalendar.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace indexer {

using namespace usage;

namespace {

using Json = nlohmann::ordered_json;

/// All that the line is made of.
struct Facts {
    std::optional<StoredTotals> totals;
    bool isOfToday = false; // the totals
    std::vector<StoredLimits> limits;
    std::optional<double> fullest;
};

/// A file from before midnight stays of today until the indexer has had an hour to run.
bool isOfToday(const StoredTotals &totals, TimePoint now)
{
    constexpr auto patience = std::chrono::hours {1};
    LocalCalendar calendar;
    const auto age = now - totals.writtenAt;
    return calendar.dayOf(totals.writtenAt) == calendar.dayOf(now)
        || (age >= age.zero() && age < patience);
}

Facts gather(const std::filesystem::path &data, const std::filesystem::path &claude, TimePoint now)
{
    Facts facts {.totals = readStoredTotals(data / "stats.json").totals,
        .limits = readStoredLimits(data, claude)};
    facts.isOfToday = facts.totals && isOfToday(*facts.totals, now);
    facts.fullest = fullestLive(facts.limits, now);
    return facts;
}

std::string text(const Facts &facts)
{
    std::string line;
    if (facts.isOfToday && facts.totals->today) {
        line = costText(Money::ofDollars(*facts.totals->today));
    }
    if (facts.fullest) {
        line += (line.empty() ? "" : " · ") + fmt::format("{:.0f}%", *facts.fullest);
    }
    return line.empty() && (facts.totals || !facts.limits.empty()) ? "–" : line;
}

std::string totalsLines(const StoredTotals &totals, bool isOfToday, TimePoint now)
{
    std::string lines;
    if (isOfToday) {
        for (const auto &[name, cost] : {std::pair("Today", totals.today),
                 {"This week", totals.week}, {"This month", totals.month}}) {
            lines += fmt::format("{}: {}\n", name, cost ? costText(Money::ofDollars(*cost)) : "?");
        }
    }
    const auto age = std::max(now - totals.writtenAt, std::chrono::milliseconds {0});
    return lines + fmt::format("Statistics changed {} ago\n", spanText(age));
}

std::string limitLines(const StoredLimits &limits, TimePoint now)
{
    std::string lines;
    const auto name = limits.provider == Provider::Claude ? "Claude" : "Codex";
    for (const LimitWindow &window : limits.windows) {
        const std::string note = windowNote(limits, window, now);
        const bool isLive = ageOf(limits, window, now) == LimitAge::Live;
        lines += fmt::format("{}, {}: {}{:.0f}%{}{}\n", name, windowName(window),
            isLive ? "" : "was ", window.percent, note.empty() ? "" : ", ", note);
    }
    const std::string age = ageNote(limits, now);
    return lines + (age.empty() ? "" : fmt::format("{} limits {}\n", name, age));
}

std::string tooltip(const Facts &facts, TimePoint now)
{
    std::string lines;
    if (facts.totals) {
        lines += totalsLines(*facts.totals, facts.isOfToday, now);
    }
    for (const StoredLimits &limits : facts.limits) {
        lines += limitLines(limits, now);
    }
    if (lines.empty()) {
        return "No statistics yet: run kestrelbay-indexer";
    }
    lines.pop_back();
    return lines;
}

const char *className(const Facts &facts)
{
    if (!facts.totals && facts.limits.empty()) {
        return "none";
    }
    if (facts.fullest && *facts.fullest >= criticalPercent) {
        return "critical";
    }
    if (facts.fullest && *facts.fullest >= warningPercent) {
        return "warning";
    }
    const bool isKnown = facts.totals ? facts.isOfToday : facts.fullest.has_value();
    return isKnown ? "normal" : "stale";
}

/// The text with nothing in it that Pango would take for markup.
std::string escaped(const std::string &text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

} // namespace

std::string waybarLine(
    const std::filesystem::path &data, const std::filesystem::path &claude, TimePoint now)
{
    constexpr long most = 100;
    const Facts facts = gather(data, claude, now);
    const Json line {{"text", escaped(text(facts))}, {"tooltip", escaped(tooltip(facts, now))},
        {"class", className(facts)},
        {"percentage", std::min(most, std::lround(facts.fullest.value_or(0)))}};
    return line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace indexer
