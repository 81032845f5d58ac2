// Claude Code's credentials: what is taken from them becomes a line of a request.

#include "widget/sources/AccountUsage.h"
#include "WidgetTarget.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

/// What another parser finds in the place of a member, nothing where it finds no sound JSON.
json member(const json &object, const char *key)
{
    return object.is_object() ? object.value(key, json()) : json();
}

} // namespace

void tryInput(const QByteArray &bytes)
{
    const std::optional<QByteArray> token = AccountUsage::token(bytes, now);
    if (!token) {
        return;
    }
    require(!token->isEmpty());
    require(std::ranges::all_of(*token, [](char c) { return c > ' ' && c < '\x7F'; }));

    const json file = json::parse(bytes.cbegin(), bytes.cend(), nullptr, false);
    if (!file.is_discarded()) {
        const json oauth = member(file, "claudeAiOauth");
        require(member(oauth, "accessToken") == token->toStdString());
        const json expiry = member(oauth, "expiresAt");
        const TimePoint least = now + std::chrono::minutes(1);
        require(!expiry.is_number()
            || expiry.get<double>() >= static_cast<double>(least.time_since_epoch().count()));
    }
}
