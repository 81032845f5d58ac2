#include "widget/sources/StatsLoad.h"

#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include "widget/sources/StatsDecoder.h"

StatsLoad loadStats(const QByteArray &bytes)
{
    auto decoded = decodeStats(bytes);
    if (const auto *error = std::get_if<StatsDecodeError>(&decoded)) {
        return StatsFailure {QString(u"decode failed: " % error->description)};
    }
    Stats &stats = std::get<Stats>(decoded);
    QList<SessionItem> sessions = sessionItems(stats);
    stats.sessions.reset(); // the list says it all, in a third of the memory
    return ParsedStats {std::move(stats), std::move(sessions)};
}

StatsLoad loadStatsFile()
{
    constexpr qint64 most = 16'000'000; // bytes; ten busy years take two million
    const std::optional<QByteArray> bytes = readJSON(Paths::stats(), most);
    return bytes ? loadStats(*bytes) : StatsFailure {QStringLiteral("cannot read the file")};
}
