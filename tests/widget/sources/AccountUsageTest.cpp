#include "widget/sources/AccountUsage.h"

#include "awaited.h"
#include "LoopbackServer.h"
#include "TestFiles.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"

using namespace AccountUsage;
using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

constexpr TimePoint now = sys_days(2026y / 3 / 5) + 14h;

QByteArray credentials(const QByteArray &token, seconds validFor)
{
    const qint64 expiry = (now + validFor).time_since_epoch().count();
    return R"({"claudeAiOauth":{"accessToken":")" + token + R"(","expiresAt":)"
        + QByteArray::number(expiry) + "}}";
}

class Polling : public testing::Test {
protected:
    void SetUp() override
    {
        LoopbackServer::trust(true);
        QDir(Paths::claude()).removeRecursively();
    }
    void TearDown() override { LoopbackServer::trust(false); }

    static void writeCredentials(const QByteArray &bytes)
    {
        writeFile(Paths::claude() % u"/.credentials.json", bytes);
    }

    std::optional<AccountOutcome> poll(const LoopbackServer &server)
    {
        const auto keychain = [this](QObject * /*owner*/) {
            ++m_keychainAsked;
            return QtFuture::makeReadyFuture(m_secret);
        };
        const QUrl endpoint(server.root() % u"api/oauth/usage");
        return awaited(fetch({endpoint, keychain, [] { return now; }}, &m_owner));
    }

    QObject m_owner;
    std::optional<QByteArray> m_secret;
    int m_keychainAsked = 0;
};

TEST(AccountToken, isTakenWhileItIsGoodForAMinute)
{
    for (const QByteArray &good :
        {credentials("t", 60s), QByteArray(R"({"claudeAiOauth":{"accessToken":"t"}})"),
            QByteArray(R"({"claudeAiOauth":{"accessToken":"t","expiresAt":"0"}})"),
            QByteArray(R"({"claudeAiOauth":{"accessToken":"t","expiresAt":1e300}})")}) {
        EXPECT_EQ(token(good, now), QByteArray("t")) << good.constData();
    }
    for (const QByteArray &useless :
        {credentials("t", 59s), credentials("", 1h), credentials("t\\r\\nHost: x", 1h),
            QByteArray(), QByteArray(R"({"claudeAiOauth":{"accessToken":7}})"),
            QByteArray(R"({"claudeAiOauth":["t"]})"), QByteArray(R"({"accessToken":"t"})"),
            QByteArray(R"([{"claudeAiOauth":{"accessToken":"t"}}])")}) {
        EXPECT_EQ(token(useless, now), std::nullopt) << useless.constData();
    }
}

TEST_F(Polling, showsTheTokenToTheEndpointAlone)
{
    writeCredentials("\xEF\xBB\xBF" + credentials("sesame", 1h));
    const LoopbackServer other(LoopbackServer::http("200 OK", "{}"));
    const LoopbackServer server(
        LoopbackServer::http("302 Found", "", "Location: " + other.root().toLatin1() + "\r\n"));
    EXPECT_EQ(poll(server), AccountOutcome(Unavailable()));
    const QByteArray request = server.requests().value(0);
    EXPECT_TRUE(request.startsWith("GET /api/oauth/usage HTTP/1.1\r\n"));
    for (const char *line : {"\r\nAuthorization: Bearer sesame\r\n",
             "\r\nUser-Agent: Kestrelbay\r\n", "\r\nanthropic-beta: oauth-2025-04-20\r\n"}) {
        EXPECT_EQ(request.count(line), 1) << line;
    }
    EXPECT_EQ(other.connections() + m_keychainAsked, 0);
    WidgetLog::flush();
    QFile log(Paths::log());
    EXPECT_FALSE(log.open(QIODevice::ReadOnly) && log.readAll().contains("sesame"));
}

TEST_F(Polling, asksTheKeychainWhenTheFileHasNoToken)
{
    const LoopbackServer server(LoopbackServer::http("200 OK", "{}"));
    for (const auto &secret : {std::optional<QByteArray>(), std::optional<QByteArray>("secret"),
             std::optional(credentials("late", 59s))}) {
        m_secret = secret;
        EXPECT_EQ(poll(server), AccountOutcome(Unavailable()));
    }
    EXPECT_EQ(server.connections(), 0) << "nothing is sent without a token";

    m_secret = credentials("from-keychain", 1h) + '\n';
    poll(server);
    writeCredentials(credentials("expiring", 30s));
    poll(server);
    writeEndless(Paths::credentials());
    poll(server);
    EXPECT_EQ(m_keychainAsked, 6);
    ASSERT_EQ(server.requests().size(), 3);
    for (const QByteArray &request : server.requests()) {
        EXPECT_TRUE(request.contains("Bearer from-keychain\r\n")) << request.constData();
    }
}

TEST_F(Polling, makesSenseOfAnswers)
{
    writeCredentials(credentials("t", 1h));
    const QByteArray good = R"({"five_hour":{"utilization":50},"seven_day":null})";
    const std::tuple<const char *, QByteArray, AccountOutcome> rows[] = {
        {"200 OK", good, Limits {.updatedAt = now, .fiveHour = Reading {50, {}}}},
        {"200 OK",
            R"({"five_hour":{"utilization":"1"},
                "seven_day":{"utilization":140.5,"resets_at":"2026-03-05T16:00:00.000+01:00"}})",
            Limits {.updatedAt = now, .sevenDay = Reading {140.5, now + 1h}}},
        {"200 OK", R"({"five_hour":50,"seven_day":[7]})", Malformed()},
        {"200 OK", "[" + good + "]", Malformed()}, {"200 OK", "busy", Malformed()},
        {"429 Slow down", good, Throttled()}, {"401 No", good, Unavailable()},
        {"500 No", good, Unavailable()}, {"204 No Content", "", Unavailable()}};
    for (const auto &[status, body, outcome] : rows) {
        const LoopbackServer server(LoopbackServer::http(status, body));
        EXPECT_EQ(poll(server), outcome) << status << ' ' << body.constData();
    }
}

} // namespace
