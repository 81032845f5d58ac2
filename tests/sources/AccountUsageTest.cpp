#include "sources/AccountUsage.h"

#include "awaited.h"
#include "core/Paths.h"
#include "core/WidgetLog.h"
#include "LoopbackServer.h"
#include "TestFiles.h"

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

    Source source(const LoopbackServer &server)
    {
        const auto keychain = [this](QObject * /*owner*/) {
            ++m_keychainAsked;
            return QtFuture::makeReadyFuture(m_secret);
        };
        return {QUrl(server.root() % u"api/oauth/usage"), keychain, [] { return now; }};
    }

    std::optional<AccountOutcome> poll(const LoopbackServer &server)
    {
        return awaited(fetch(source(server), &m_owner));
    }

    QObject m_owner;
    std::optional<QByteArray> m_secret;
    int m_keychainAsked = 0;
};

const QByteArray halfUsed =
    LoopbackServer::http("200 OK", R"({"five_hour":{"utilization":50},"seven_day":null})");

TEST(AccountToken, isTakenWhileItIsGoodForAMinute)
{
    const std::pair<QByteArray, bool> rows[] = {
        {credentials("t", 60s), true},
        {credentials("t", 59s), false},
        {credentials("t", -24h), false},
        {credentials("", 1h), false},
        {R"({"claudeAiOauth":{"accessToken":"t"}})", true},
        {R"({"claudeAiOauth":{"accessToken":"t","expiresAt":"0"}})", true},
        {R"({"claudeAiOauth":{"accessToken":"t","expiresAt":0}})", false},
        {R"({"claudeAiOauth":{"accessToken":"t","expiresAt":1e300}})", true},
        {R"({"claudeAiOauth":{"accessToken":7}})", false},
        {R"({"claudeAiOauth":["t"]})", false},
        {R"({"accessToken":"t"})", false},
        {R"([{"claudeAiOauth":{"accessToken":"t"}}])", false},
        {"", false},
    };
    for (const auto &[bytes, good] : rows) {
        EXPECT_EQ(token(bytes, now), good ? std::optional(QByteArray("t")) : std::nullopt)
            << bytes.constData();
    }
}

TEST_F(Polling, showsTheTokenToTheEndpointAlone)
{
    writeCredentials("\xEF\xBB\xBF" + credentials("sesame", 1h));
    const LoopbackServer other(halfUsed);
    const LoopbackServer server(LoopbackServer::http(
        "302 Found", "", "Set-Cookie: id=7\r\nLocation: " + other.root().toLatin1() + "\r\n"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(poll(server), AccountOutcome(Unavailable()));
        const QByteArray request = server.requests().value(i);
        EXPECT_TRUE(request.startsWith("GET /api/oauth/usage HTTP/1.1\r\n"));
        for (const char *line : {"Authorization: Bearer sesame", "User-Agent: Kestrelbay",
                 "anthropic-beta: oauth-2025-04-20"}) {
            EXPECT_EQ(request.count(QByteArray("\r\n" + QByteArray(line) + "\r\n")), 1) << line;
        }
        EXPECT_FALSE(request.toLower().contains("cookie:"));
    }
    Source plain = source(server);
    plain.endpoint.setScheme(QStringLiteral("http"));
    EXPECT_EQ(awaited(fetch(plain, &m_owner)), AccountOutcome(Unavailable()));
    EXPECT_EQ(server.connections(), 2);
    EXPECT_EQ(other.connections(), 0);
    EXPECT_EQ(m_keychainAsked, 0);

    WidgetLog::flush();
    QFile log(Paths::log());
    EXPECT_FALSE(log.open(QIODevice::ReadOnly) && log.readAll().contains("sesame"));
}

TEST_F(Polling, asksTheKeychainWhenTheFileHasNoToken)
{
    const LoopbackServer server(halfUsed);
    for (const auto &secret : {std::optional<QByteArray>(), std::optional<QByteArray>("secret"),
             std::optional(credentials("late", 59s))}) {
        m_secret = secret;
        EXPECT_EQ(poll(server), AccountOutcome(Unavailable()));
    }
    EXPECT_EQ(server.connections(), 0) << "nothing is sent without a token";

    m_secret = credentials("from-keychain", 1h) + '\n';
    poll(server);
    for (const QByteArray &useless : {credentials("expiring", 30s), QByteArray("{")}) {
        writeCredentials(useless);
        poll(server);
    }
    EXPECT_EQ(m_keychainAsked, 6);
    ASSERT_EQ(server.requests().size(), 3);
    for (const QByteArray &request : server.requests()) {
        EXPECT_TRUE(request.contains("Bearer from-keychain\r\n")) << request.constData();
    }
}

TEST_F(Polling, makesSenseOfAnswers)
{
    writeCredentials(credentials("t", 1h));
    const QByteArray good = R"({"five_hour":{"utilization":50}})";
    const Limits half {.updatedAt = now, .fiveHour = Reading {50, {}}};
    const std::tuple<const char *, QByteArray, AccountOutcome> rows[] = {
        {"200 OK", good, half},
        {"200 OK", R"({"five_hour":{"utilization":50,"resets_at":"soon"},"seven_day":null})", half},
        {"200 OK",
            R"({"five_hour":{"utilization":"1"},
                "seven_day":{"utilization":140.5,"resets_at":"2026-03-05T16:00:00.000+01:00"}})",
            Limits {.updatedAt = now, .sevenDay = Reading {140.5, now + 1h}}},
        {"200 OK", "{}", Malformed()},
        {"200 OK", R"({"five_hour":50,"seven_day":[7]})", Malformed()},
        {"200 OK", "[" + good + "]", Malformed()},
        {"200 OK", "busy", Malformed()},
        {"429 Slow down", good, Throttled()},
        {"401 No", good, Unavailable()},
        {"403 No", good, Unavailable()},
        {"500 No", good, Unavailable()},
        {"204 No Content", "", Unavailable()},
    };
    for (const auto &[status, body, outcome] : rows) {
        const LoopbackServer server(LoopbackServer::http(status, body));
        EXPECT_EQ(poll(server), outcome) << status << ' ' << body.constData();
    }
}

} // namespace
