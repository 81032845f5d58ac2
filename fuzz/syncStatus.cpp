// What the sync script tells of itself.

#include "widget/scripts/SyncStatus.h"

#include "widget/core/IsoParser.h"
#include "widget/model/dayAndTime.h"
#include "widget/text/Strings.h"
#include "WidgetTarget.h"

#include <nlohmann/json.hpp>

namespace {

/// Times come as the script writes them; only those that are times are written anew.
void lookAt(const std::optional<QString> &when)
{
    const auto moment = isoParser()(QStringView(when.value_or(QString())));
    require(isSane(moment));
    require(!moment || !dayAndTime(strings(), *moment, now).isEmpty());
}

} // namespace

void tryInput(const QByteArray &bytes)
{
    constexpr auto mark = "\xEF\xBB\xBF";
    const std::optional<SyncStatus> status = SyncStatus::parse(bytes);
    require(bytes.startsWith(mark) || SyncStatus::parse(mark + bytes) == status);
    if (!status) {
        return;
    }
    lookAt(status->lastSync);
    lookAt(status->historyFrom);
    const auto document = nlohmann::json::parse(bytes.cbegin(), bytes.cend(), nullptr, false);
    const auto told = document.is_object() ? document.value("links", nlohmann::json()) : document;
    const QList<SyncLink> links = status->links.value_or(QList<SyncLink>());
    for (const SyncLink &link : links) {
        lookAt(link.seenAt);
    }
    // As they are told, as another parser has it.
    qsizetype next = 0;
    for (const auto &link : told.is_array() ? told : nlohmann::json::array()) {
        if (link.is_object() && link.contains("id") && link["id"].is_string()) {
            require(next < links.size() && link["id"] == links.at(next).id.toStdString());
            ++next;
        }
    }
    require(!document.is_object() || next == links.size());
}
