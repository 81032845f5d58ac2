#include "scripts/SyncStatus.h"

#include "sources/TypedReader.h"

namespace {

using Object = TypedReader::Object;

SyncLink syncLink(TypedReader &r, Object in)
{
    return {
        .id = r.requiredText(in, "id"),
        .name = r.text(in, "name"),
        .os = r.text(in, "os"),
        .enabled = r.flag(in, "enabled"),
        .seenAt = r.text(in, "seenAt"),
    };
}

SyncStatus syncStatus(TypedReader &r, Object in)
{
    return {
        .id = r.text(in, "id"),
        .enabled = r.flag(in, "enabled"),
        .name = r.text(in, "name"),
        .hasPassword = r.flag(in, "hasPassword"),
        .links = r.array<QList<SyncLink>>(in, "links", syncLink),
        .lastSync = r.text(in, "lastSync"),
        .historyFrom = r.text(in, "historyFrom"),
        .error = r.text(in, "error"),
    };
}

} // namespace

std::optional<SyncStatus> SyncStatus::parse(const QByteArray &bytes)
{
    if (bytes.size() > most) {
        return std::nullopt;
    }
    const JsonDocument document(bytes);
    if (!document.root()) {
        return std::nullopt;
    }
    TypedReader reader;
    SyncStatus status = reader.record(*document.root(), syncStatus);
    return reader.failed() ? std::nullopt : std::optional(std::move(status));
}
