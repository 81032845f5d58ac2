#include "formats/CodexLimits.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Window {
    Reading reading;
    std::optional<Seconds> length;
};

std::optional<Seconds> lengthOf(const simdjson::dom::object &window)
{
    const auto minutes = numberIn(window, "minutes");
    const Seconds length(minutes.value_or(0) * 60);
    return minutes && std::isfinite(length.count()) ? std::optional(length) : std::nullopt;
}

/// The windows that make sense, the shorter one first; one that does not tell its length counts as
/// the shorter one.
std::vector<Window> windowsIn(const simdjson::dom::object &file)
{
    std::vector<Window> found;
    for (const char *key : {"primary", "secondary"}) {
        if (const auto reading = readReading(file, key)) {
            found.push_back({*reading, lengthOf(*objectIn(file, key))});
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const Window &a, const Window &b) {
        return a.length.value_or(Seconds(0)) < b.length.value_or(Seconds(0));
    });
    return found;
}

} // namespace

std::optional<CodexLimits> CodexLimits::parse(std::string_view bytes)
{
    const JsonObject file(bytes);
    if (!file.root()) {
        return std::nullopt;
    }
    const std::vector<Window> windows = windowsIn(*file.root());
    CodexLimits codex;
    if (!windows.empty()) {
        codex.limits.fiveHour = windows[0].reading;
        codex.primaryLength = windows[0].length.value_or(Limit::fiveHours);
    }
    if (windows.size() > 1) {
        codex.limits.sevenDay = windows[1].reading;
        codex.secondaryLength = windows[1].length.value_or(Limit::week);
    }
    codex.limits.updatedAt = timeIn(*file.root(), "updatedAt");
    codex.plan = textIn(*file.root(), "plan");
    return codex;
}
