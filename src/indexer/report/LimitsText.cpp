#include "indexer/report/LimitsText.h"

#include "indexer/terminal/FigureText.h"

#include <array>
#include <cmath>
#include <fmt/format.h>

namespace indexer {

using namespace usage;

namespace {

constexpr std::array<const char *, 2> assistants {"Claude", "Codex"};

Ink inkOf(LimitAge age, double percent)
{
    if (age != LimitAge::Live) {
        return Ink::Dim;
    }
    if (percent >= criticalPercent) {
        return Ink::Red;
    }
    return percent >= warningPercent ? Ink::Yellow : Ink::Plain;
}

} // namespace

std::string windowName(const LimitWindow &window)
{
    constexpr long week = 168;
    constexpr long perDay = 24;
    constexpr double perHour = 60;
    const long hours = std::lround(window.minutes / perHour);
    if (hours == week) {
        return "week";
    }
    return hours > 0 && hours % perDay == 0 ? fmt::format("{} days", hours / perDay)
                                            : fmt::format("{} hours", hours);
}

std::string windowNote(const StoredLimits &limits, const LimitWindow &window, TimePoint now)
{
    switch (ageOf(limits, window, now)) {
    case LimitAge::Reset:
        return fmt::format(
            "has begun anew since ({}); no newer figure", clockText(*window.resetsAt, now));
    case LimitAge::Unknown:
        return "out of date; no newer figure";
    case LimitAge::Live:
        break;
    }
    return window.resetsAt ? fmt::format("resets in {} ({})", spanText(*window.resetsAt - now),
               clockText(*window.resetsAt, now))
                           : std::string();
}

std::string ageNote(const StoredLimits &limits, TimePoint now)
{
    constexpr auto fresh = std::chrono::minutes {15};
    return !limits.updatedAt || now - *limits.updatedAt < fresh
        ? std::string()
        : fmt::format("told {} ago", spanText(now - *limits.updatedAt));
}

std::string limitsText(
    const std::vector<StoredLimits> &all, TimePoint now, const Terminal &terminal)
{
    std::string text = all.empty() ? std::string() : inked("Limits", Ink::Bold, terminal) + '\n';
    for (const StoredLimits &limits : all) {
        const char *name = assistants.at(static_cast<std::size_t>(limits.provider));
        for (const LimitWindow &window : limits.windows) {
            const LimitAge age = ageOf(limits, window, now);
            const std::string percent =
                fmt::format("{}{:.0f}%", age == LimitAge::Live ? "" : "was ", window.percent);
            const std::string note = windowNote(limits, window, now);
            text += fmt::format("  {:<6}  {:<8}  {}{}{}\n", name, windowName(window),
                inked(fmt::format("{:>8}", percent), inkOf(age, window.percent), terminal),
                note.empty() ? "" : "  ", note);
            name = "";
        }
        if (const std::string note = ageNote(limits, now); !note.empty()) {
            text += fmt::format("  {:<6}  {}\n", "", inked(note, Ink::Dim, terminal));
        }
    }
    return text;
}

} // namespace indexer
