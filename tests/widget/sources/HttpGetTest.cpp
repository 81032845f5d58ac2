#include "widget/sources/HttpGet.h"

#include "awaited.h"
#include "LoopbackServer.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace std::chrono_literals;
using Reply = std::optional<HttpReply>;

class Getting : public testing::Test {
protected:
    void SetUp() override { LoopbackServer::trust(true); }
    void TearDown() override { LoopbackServer::trust(false); }

    std::optional<Reply> ask(const QString &address, HttpGet::Patience patience = {10s, 15s})
    {
        return awaited(HttpGet::start(QNetworkRequest(QUrl(address)), patience, &m_owner));
    }

    const std::optional<Reply> m_nothing = Reply();
    QObject m_owner;
};

TEST_F(Getting, keepsNoCookieAndGoesNowhereElse)
{
    const LoopbackServer other(LoopbackServer::http("200 OK", "{}"));
    for (const char *status : {"301 Moved", "302 Found", "307 Moved"}) {
        const QByteArray location = "Location: " + other.root().toLatin1() + "\r\n";
        const LoopbackServer server(
            LoopbackServer::http(status, "here", "Set-Cookie: id=7; Path=/\r\n" + location));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(ask(server.root()), Reply(HttpReply {atoi(status), "here"}));
            EXPECT_FALSE(server.requests().value(i).toLower().contains("cookie:"));
        }
    }
    EXPECT_EQ(ask(u"http" % other.root().mid(5)), m_nothing);
    EXPECT_EQ(other.connections(), 0);
    LoopbackServer::trust(false);
    EXPECT_EQ(ask(other.root()), m_nothing);
    EXPECT_EQ(other.connections(), 1);
    EXPECT_EQ(other.requests().size(), 0) << "a server that cannot be trusted is told nothing";
}

TEST_F(Getting, takesWholeAnswersOfASensibleSizeOnly)
{
    // Broken off or beyond reading, though what has come would do.
    for (const char *part :
        {"Content-Length: 99\r\n\r\n{}", "Transfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n",
            "Transfer-Encoding: chunked\r\n\r\n2\r\n{}\r\nno size\r\n",
            "Content-Encoding: gzip\r\nContent-Length: 13\r\n\r\n\x1f\x8b\x08 cut short"}) {
        const LoopbackServer server("HTTP/1.1 200 OK\r\n" + QByteArray(part));
        EXPECT_EQ(ask(server.root()), m_nothing) << part;
    }
    const LoopbackServer hanging(
        "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n{", LoopbackServer::Then::Hang);
    EXPECT_EQ(ask(hanging.root(), {500ms, 60s}), m_nothing);
    EXPECT_EQ(ask(hanging.root(), {60s, 1s}), m_nothing);
    EXPECT_EQ(hanging.requests().size(), 2);
    constexpr qsizetype huge = 40'000'000;
    const LoopbackServer verbose(LoopbackServer::http("200 OK", QByteArray(huge, 'x')));
    EXPECT_EQ(ask(verbose.root()), Reply(HttpReply {200, {}}));
    EXPECT_LT(verbose.sent(), huge / 2) << "the rest stays with the server";
}

TEST_F(Getting, putsOneRequestOnTheWireWhateverBecomesOfIt)
{
    for (const char *answer : {"", "HTTP/1.1", "HTTP/1.1 200 OK\r\nContent-Le",
             "HTTP/1.1 401 No\r\nWWW-Authenticate: Negotiate\r\n\r\n"}) {
        const LoopbackServer server(answer);
        EXPECT_FALSE(ask(server.root()).value_or(Reply()).value_or(HttpReply()).status == 200);
        EXPECT_FALSE(QTest::qWaitFor([&] { return server.connections() > 1; }, 200)) << answer;
        EXPECT_EQ(server.requests().size(), 1) << answer;
        EXPECT_TRUE(server.requests().value(0).startsWith("GET / HTTP/1.1\r\n")) << answer;
    }
}

TEST_F(Getting, endsWithItsOwner)
{
    const LoopbackServer server(
        "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{", LoopbackServer::Then::Hang);
    auto owner = std::make_unique<QObject>();
    const auto future =
        HttpGet::start(QNetworkRequest(QUrl(server.root())), {10s, 15s}, owner.get());
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }, 20'000));
    EXPECT_EQ(server.ended(), 0);
    owner.reset();
    EXPECT_TRUE(future.isCanceled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.ended() == 1; }, 20'000));
}

} // namespace
