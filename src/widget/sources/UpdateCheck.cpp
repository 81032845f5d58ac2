#include "widget/sources/UpdateCheck.h"

#include "widget/core/parseObject.h"
#include "widget/sources/HttpGet.h"
#include <QUrlQuery>

using namespace std::chrono_literals;

namespace {

constexpr HttpGet::Patience patience {5s, 10s};
constexpr int ok = 200;

QUrl address(const QString &site, const QString &current)
{
    QUrlQuery query;
    // One line of releases serves every desktop; the server knows it by this name.
    query.addQueryItem(QStringLiteral("os"), QStringLiteral("macos"));
    query.addQueryItem(QStringLiteral("v"), QString::fromLatin1(QUrl::toPercentEncoding(current)));
    QUrl url(site % u"api/version");
    url.setQuery(query);
    return url;
}

} // namespace

UpdateCheck::UpdateOutcome UpdateCheck::outcomeOf(const std::optional<HttpReply> &reply)
{
    if (!reply || reply->status != ok) {
        return Unavailable();
    }
    const QJsonObject body = parseObject(reply->body).value_or(QJsonObject());
    const QJsonValue version = body.value(QLatin1String("version"));
    if (!version.isString()) {
        return Malformed();
    }
    const QJsonValue url = body.value(QLatin1String("url"));
    return UpdateReply {
        version.toString(), url.isString() ? std::optional(url.toString()) : std::nullopt};
}

QFuture<UpdateCheck::UpdateOutcome> UpdateCheck::fetch(
    const QString &current, const QString &site, QObject *owner)
{
    return HttpGet::start(QNetworkRequest(address(site, current)), patience, owner).then(outcomeOf);
}
