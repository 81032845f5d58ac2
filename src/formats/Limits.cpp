#include "formats/Limits.h"

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

/// Two reset times that are no further apart belong to the same window.
constexpr Seconds sameWindow = 600s;

std::optional<Reading> join(const std::optional<Reading> &a, const std::optional<Reading> &b)
{
    if (!a || !b) {
        return a ? a : b;
    }
    if (a->resetsAt && b->resetsAt) {
        const Seconds later = elapsed(*a->resetsAt, *b->resetsAt);
        if (later > sameWindow || later < -sameWindow) {
            // The window has begun anew since the other source looked.
            return later > Seconds(0) ? b : a;
        }
    }
    return b->percent > a->percent ? b : a;
}

} // namespace

std::optional<Limits> Limits::parse(std::string_view bytes)
{
    const JsonObject file(bytes);
    if (!file.root()) {
        return std::nullopt;
    }
    return Limits {.updatedAt = timeIn(*file.root(), "updatedAt"),
        .fiveHour = readReading(*file.root(), "fiveHour"),
        .sevenDay = readReading(*file.root(), "sevenDay"),
        .accountAt = timeIn(*file.root(), "accountAt")};
}

std::optional<Limits> Limits::merge(
    const std::optional<Limits> &first, const std::optional<Limits> &second)
{
    if (!first || !second) {
        return first ? first : second;
    }
    Limits merged;
    merged.updatedAt = std::max(first->updatedAt, second->updatedAt); // nothing is less than any
    merged.fiveHour = join(first->fiveHour, second->fiveHour);
    merged.sevenDay = join(first->sevenDay, second->sevenDay);
    return merged;
}
