#include "widget/sources/AccountUsage.h"

#include "widget/core/parseObject.h"
#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include "widget/core/whenDone.h"
#include "widget/sources/HttpGet.h"
#include <algorithm>
#include <QPromise>
#include <QtConcurrent/QtConcurrentRun>

using namespace std::chrono_literals;

namespace {

using Token = std::optional<QByteArray>;

// Of the two waits the session allows less than the request itself would.
constexpr HttpGet::Patience patience {10s, 15s};
constexpr qint64 mostCredentials = 1'000'000; // bytes
constexpr int ok = 200;
constexpr int tooManyRequests = 429;

QNetworkRequest request(const QUrl &endpoint, const QByteArray &token)
{
    QNetworkRequest made(endpoint);
    made.setRawHeader("Authorization", "Bearer " + token);
    made.setRawHeader("anthropic-beta", "oauth-2025-04-20");
    return made;
}

AccountUsage::AccountOutcome readBody(const QByteArray &body, TimePoint now)
{
    const JsonObject reply({body.constData(), static_cast<std::size_t>(body.size())});
    if (!reply.root()) {
        return AccountUsage::Malformed();
    }
    const auto window = [&](std::string_view key) {
        return readReading(*reply.root(), key, {"utilization", "resets_at"});
    };
    Limits limits;
    limits.updatedAt = now;
    limits.fiveHour = window("five_hour");
    limits.sevenDay = window("seven_day");
    if (!limits.fiveHour && !limits.sevenDay) {
        return AccountUsage::Malformed();
    }
    return limits;
}

Token tokenOfFile(TimePoint now)
{
    const auto bytes = readJSON(Paths::credentials(), mostCredentials);
    return bytes ? AccountUsage::token(*bytes, now) : std::nullopt;
}

/// One poll from the token to the outcome; it deletes itself at its end.
class Poll final : public QObject {
public:
    Poll(const AccountUsage::Source &source, QObject *owner)
        : QObject(owner)
        , m_source(source)
    {
        m_promise.start();
        whenDone(QtConcurrent::run(tokenOfFile, m_source.now()), this,
            [this](const Token &token) { token ? ask(*token) : askKeychain(); });
    }

    [[nodiscard]] QFuture<AccountUsage::AccountOutcome> future() { return m_promise.future(); }

private:
    void askKeychain()
    {
        whenDone(m_source.keychain(this), this, [this](const Token &secret) {
            const Token token = secret ? AccountUsage::token(*secret, m_source.now()) : secret;
            token ? ask(*token) : finish(AccountUsage::Unavailable());
        });
    }

    void ask(const QByteArray &token)
    {
        whenDone(HttpGet::start(request(m_source.endpoint, token), patience, this), this,
            [this](const std::optional<HttpReply> &reply) {
                finish(AccountUsage::outcomeOf(reply, m_source.now()));
            });
    }

    void finish(const AccountUsage::AccountOutcome &outcome)
    {
        m_promise.addResult(outcome);
        m_promise.finish();
        deleteLater();
    }

    AccountUsage::Source m_source;
    QPromise<AccountUsage::AccountOutcome> m_promise;
};

} // namespace

AccountUsage::AccountOutcome AccountUsage::outcomeOf(
    const std::optional<HttpReply> &reply, TimePoint now)
{
    if (reply && reply->status == tooManyRequests) {
        return Throttled();
    }
    return reply && reply->status == ok ? readBody(reply->body, now) : Unavailable();
}

std::optional<QByteArray> AccountUsage::token(const QByteArray &bytes, TimePoint now)
{
    const QJsonObject file = parseObject(bytes).value_or(QJsonObject());
    const QJsonObject oauth = file.value(QLatin1String("claudeAiOauth")).toObject();
    const QString token = oauth.value(QLatin1String("accessToken")).toString();
    const QJsonValue expiry = oauth.value(QLatin1String("expiresAt"));
    const auto neededUntil = (now + 60s).time_since_epoch();
    // What is no plain word would break the header that it goes into.
    const bool isWord =
        std::ranges::all_of(token, [](QChar c) { return c.unicode() > u' ' && c.unicode() < 127; });
    if (token.isEmpty() || !isWord
        || (expiry.isDouble() && expiry.toDouble() < static_cast<double>(neededUntil.count()))) {
        return std::nullopt;
    }
    return token.toUtf8();
}

QFuture<AccountUsage::AccountOutcome> AccountUsage::fetch(const Source &source, QObject *owner)
{
    return (new Poll(source, owner))->future();
}
