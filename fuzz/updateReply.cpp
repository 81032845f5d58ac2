// What the product's server answers about the newest version: the panel shows it and opens its
// page.

#include "widget/sources/AppVersion.h"
#include "widget/sources/HttpGet.h"
#include "widget/sources/UpdateCheck.h"
#include "WidgetTarget.h"

#include <algorithm>

namespace {

bool isDigitOrDot(QChar c)
{
    return c == u'.' || (c >= u'0' && c <= u'9');
}

} // namespace

void tryInput(const QByteArray &bytes)
{
    constexpr int ok = 200;
    const UpdateCheck::UpdateOutcome outcome = UpdateCheck::outcomeOf(HttpReply {ok, bytes});
    const auto *const reply = std::get_if<UpdateReply>(&outcome);
    require(reply || std::holds_alternative<UpdateCheck::Malformed>(outcome));
    if (!reply) {
        return;
    }
    const QString &base = *AppVersion::current();
    if (AppVersion::isNewer(reply->version, base)) {
        require(std::ranges::all_of(reply->version.trimmed(), isDigitOrDot));
        require(!AppVersion::isNewer(base, reply->version));
    }
    require(!AppVersion::isNewer(reply->version, reply->version));
    const QUrl site(AppVersion::site());
    for (const QString &language : {QStringLiteral("en"), QStringLiteral("de"), reply->version}) {
        const QUrl page = AppVersion::pageURL(reply->url, language);
        require(page.isValid() && page.scheme() == u"https" && page.userInfo().isEmpty());
        require(page.host() == site.host() && page.port() == site.port());
    }
}
