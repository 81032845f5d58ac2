#include "sources/StatsLoad.h"

#include "core/Paths.h"
#include "core/readJSON.h"
#include "sources/StatsDecoder.h"

StatsLoad loadStatsFile()
{
    const std::optional<QByteArray> bytes = readJSON(Paths::stats());
    if (!bytes) {
        return StatsFailure {QStringLiteral("cannot read the file")};
    }
    auto decoded = decodeStats(*bytes);
    if (const auto *error = std::get_if<StatsDecodeError>(&decoded)) {
        return StatsFailure {QString(u"decode failed: " % error->description)};
    }
    Stats &stats = std::get<Stats>(decoded);
    QList<SessionItem> sessions = sessionItems(stats);
    return ParsedStats {std::move(stats), std::move(sessions)};
}
