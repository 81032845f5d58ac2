#include "sources/CodexLimits.h"

#include "core/parseObject.h"
#include <algorithm>
#include <cmath>
#include <QVarLengthArray>

namespace {

struct Window {
    Reading reading;
    std::optional<Seconds> length;
};

std::optional<Window> readWindow(const QJsonValue &value, const IsoParser &moments)
{
    const std::optional<Reading> reading = readReading(value, moments);
    if (!reading) {
        return std::nullopt;
    }
    Window window {*reading, std::nullopt};
    const QJsonValue minutes = value.toObject().value(QLatin1String("minutes"));
    const Seconds length(minutes.toDouble() * 60);
    if (minutes.isDouble() && std::isfinite(length.count())) {
        window.length = length;
    }
    return window;
}

/// The windows that make sense, the shorter one first; one that does not tell its length is the
/// shorter one.
QVarLengthArray<Window, 2> windows(const QJsonObject &file, const IsoParser &moments)
{
    QVarLengthArray<Window, 2> found;
    for (const char *key : {"primary", "secondary"}) {
        if (const auto window = readWindow(file.value(QLatin1String(key)), moments)) {
            found.append(*window);
        }
    }
    std::ranges::stable_sort(
        found, {}, [](const Window &window) { return window.length.value_or(Seconds(0)); });
    return found;
}

} // namespace

std::optional<CodexLimits> CodexLimits::parse(const QByteArray &bytes)
{
    const std::optional<QJsonObject> file = parseObject(bytes);
    if (!file) {
        return std::nullopt;
    }
    const IsoParser moments = isoParser();
    const auto found = windows(*file, moments);
    CodexLimits codex;
    if (!found.isEmpty()) {
        codex.limits.fiveHour = found[0].reading;
        codex.primaryLength = found[0].length.value_or(Limit::fiveHours);
    }
    if (found.size() > 1) {
        codex.limits.sevenDay = found[1].reading;
        codex.secondaryLength = found[1].length.value_or(Limit::week);
    }
    codex.limits.updatedAt = moments(file->value(QLatin1String("updatedAt")));
    const QJsonValue plan = file->value(QLatin1String("plan"));
    if (plan.isString()) {
        codex.plan = plan.toString();
    }
    return codex;
}
