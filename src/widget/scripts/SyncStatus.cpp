#include "widget/scripts/SyncStatus.h"

#include "widget/sources/TypedReader.h"

namespace {

using Object = TypedReader::Object;

/// Nothing for a device that cannot be named to the script.
std::optional<SyncLink> syncLink(TypedReader &r, Object in)
{
    const std::optional<QString> id = r.text(in, "id");
    if (!id) {
        return std::nullopt;
    }
    return SyncLink {
        .id = *id,
        .name = r.text(in, "name"),
        .os = r.text(in, "os"),
        .enabled = r.flag(in, "enabled"),
        .seenAt = r.text(in, "seenAt"),
    };
}

std::optional<QList<SyncLink>> syncLinks(TypedReader &r, Object in)
{
    const auto told = r.array<QList<std::optional<SyncLink>>>(in, "links", syncLink);
    if (!told) {
        return std::nullopt;
    }
    QList<SyncLink> links;
    for (const std::optional<SyncLink> &link : *told) {
        if (link) {
            links.append(*link);
        }
    }
    return links;
}

SyncStatus syncStatus(TypedReader &r, Object in)
{
    return {
        .id = r.text(in, "id"),
        .enabled = r.flag(in, "enabled"),
        .name = r.text(in, "name"),
        .hasPassword = r.flag(in, "hasPassword"),
        .links = syncLinks(r, in),
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
    TypedReader reader(TypedReader::WrongType::IsAbsent);
    SyncStatus status = reader.record(*document.root(), syncStatus);
    return reader.failed() ? std::nullopt : std::optional(std::move(status));
}
