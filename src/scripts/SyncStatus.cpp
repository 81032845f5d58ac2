#include "scripts/SyncStatus.h"

#include "core/parseObject.h"
#include "sources/TypedReader.h"

namespace {

using Key = QLatin1String;

SyncLink syncLink(TypedReader &r, const QJsonObject &in)
{
    return {
        .id = r.requiredText(in, Key("id")),
        .name = r.text(in, Key("name")),
        .os = r.text(in, Key("os")),
        .enabled = r.flag(in, Key("enabled")),
        .seenAt = r.text(in, Key("seenAt")),
    };
}

SyncStatus syncStatus(TypedReader &r, const QJsonObject &in)
{
    return {
        .id = r.text(in, Key("id")),
        .enabled = r.flag(in, Key("enabled")),
        .name = r.text(in, Key("name")),
        .hasPassword = r.flag(in, Key("hasPassword")),
        .links = r.array(in, Key("links"), syncLink),
        .lastSync = r.text(in, Key("lastSync")),
        .historyFrom = r.text(in, Key("historyFrom")),
        .error = r.text(in, Key("error")),
    };
}

} // namespace

std::optional<SyncStatus> SyncStatus::parse(const QByteArray &bytes)
{
    // Qt's parser passes over a byte-order mark itself.
    const std::optional<QJsonObject> document =
        bytes.size() <= most ? parseObject(bytes) : std::nullopt;
    if (!document) {
        return std::nullopt;
    }
    TypedReader reader;
    SyncStatus status = syncStatus(reader, *document);
    return reader.failed() ? std::nullopt : std::optional(std::move(status));
}
