#include "sources/UpdateCheck.h"

#include "awaited.h"
#include "LoopbackServer.h"
#include <gtest/gtest.h>
#include <memory>

using namespace UpdateCheck;

namespace {

const UpdateOutcome malformed = Malformed();
const UpdateOutcome unavailable = Unavailable();
const QByteArray good = R"({"version":"1.3","url":"https://x/"})";
const UpdateOutcome reply = UpdateReply {QStringLiteral("1.3"), QStringLiteral("https://x/")};

class Checking : public testing::Test {
protected:
    void SetUp() override { LoopbackServer::trust(true); }
    void TearDown() override { LoopbackServer::trust(false); }

    std::optional<UpdateOutcome> ask(const QString &site, const char *version = "1.2")
    {
        return awaited(fetch(QString::fromUtf8(version), site, &m_owner));
    }

    QObject m_owner;
};

TEST_F(Checking, tellsItsVersionAndKeepsNoCookie)
{
    const LoopbackServer server(
        LoopbackServer::http("200 OK", good, "Set-Cookie: id=7; Path=/\r\n"));
    for (const auto &[version, sent] : {std::pair("1.2", "1.2"),
             std::pair("1.2 +\xC3\xA4&os=x#%", "1.2%20%2B%C3%A4%26os%3Dx%23%25")}) {
        EXPECT_EQ(ask(server.root(), version), reply);
        const QByteArray request = server.requests().value(server.requests().size() - 1);
        const QByteArray line = QByteArray("GET /api/version?os=macos&v=") + sent + " HTTP/1.1\r\n";
        EXPECT_TRUE(request.startsWith(line)) << request.constData();
        EXPECT_FALSE(request.toLower().contains("cookie:"));
    }
}

TEST_F(Checking, makesSenseOfAnswers)
{
    const std::tuple<const char *, QByteArray, UpdateOutcome> rows[] = {
        {"200 OK", good, reply},
        {"200 OK", R"({"version":"1","url":7})", UpdateReply {QStringLiteral("1"), {}}},
        {"200 OK", R"({"version":1.3})", malformed},
        {"200 OK", "[" + good + "]", malformed},
        {"200 OK", "<html>", malformed},
        {"200 OK", "", malformed},
        {"201 Created", good, unavailable},
        {"404 No", good, unavailable},
        {"500 No", good, unavailable},
        {"rubbish", good, unavailable},
    };
    for (const auto &[status, body, outcome] : rows) {
        const LoopbackServer server(LoopbackServer::http(status, body));
        EXPECT_EQ(ask(server.root()), outcome) << status << ' ' << body.constData();
    }
    // Broken off, though what has come would do.
    for (const QByteArray &part : {QByteArray("Content-Length: 99\r\n\r\n" + good),
             QByteArray("Transfer-Encoding: chunked\r\n\r\n" + QByteArray::number(good.size(), 16)
                 + "\r\n" + good + "\r\n")}) {
        const LoopbackServer server("HTTP/1.1 200 OK\r\n" + part);
        EXPECT_EQ(ask(server.root()), unavailable) << part.constData();
    }
}

TEST_F(Checking, takesNoMoreThanAnAnswerCanBe)
{
    constexpr qsizetype huge = 40'000'000;
    const LoopbackServer server(LoopbackServer::http(
        "200 OK", R"({"version":"1.3","x":")" + QByteArray(huge, 'x') + "\"}"));
    EXPECT_EQ(ask(server.root()), malformed);
    EXPECT_LT(server.sent(), huge / 2) << "the rest stays with the server";
}

TEST_F(Checking, goesToTheSiteAloneAndOnlyIfItCanBeTrusted)
{
    const LoopbackServer other(LoopbackServer::http("200 OK", good));
    for (const char *status : {"301 Moved", "302 Found", "307 Moved"}) {
        const LoopbackServer server(
            LoopbackServer::http(status, "", "Location: " + other.root().toLatin1() + "\r\n"));
        EXPECT_EQ(ask(server.root()), unavailable) << status;
    }
    for (const QString &site : {QString(), QString(u"http" % other.root().mid(5))}) {
        EXPECT_EQ(ask(site), unavailable) << site.toStdString();
    }
    EXPECT_EQ(other.connections(), 0);
    LoopbackServer::trust(false);
    EXPECT_EQ(ask(other.root()), unavailable);
    EXPECT_EQ(other.connections(), 1);
    EXPECT_EQ(other.requests().size(), 0);
}

TEST_F(Checking, endsWithItsOwner)
{
    const LoopbackServer server(
        "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{", LoopbackServer::Then::Hang);
    auto owner = std::make_unique<QObject>();
    const auto future = fetch(QStringLiteral("1.2"), server.root(), owner.get());
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }, 20'000));
    EXPECT_EQ(server.ended(), 0);
    owner.reset();
    EXPECT_TRUE(future.isCanceled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.ended() == 1; }, 20'000));
}

} // namespace
