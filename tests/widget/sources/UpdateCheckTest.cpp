#include "widget/sources/UpdateCheck.h"

#include "awaited.h"
#include "LoopbackServer.h"
#include <gtest/gtest.h>

using namespace UpdateCheck;

namespace {

TEST(UpdateCheck, tellsItsVersionAndMakesSenseOfAnswers)
{
    LoopbackServer::trust(true);
    QObject owner;
    const QByteArray good = R"({"version":"1.3","url":"https://x/"})";
    const std::tuple<const char *, QByteArray, UpdateOutcome> rows[] = {
        {"200 OK", good, UpdateReply {QStringLiteral("1.3"), QStringLiteral("https://x/")}},
        {"200 OK", R"({"version":"1","url":7})", UpdateReply {QStringLiteral("1"), {}}},
        {"200 OK", R"({"version":1.3})", Malformed()}, {"200 OK", "[" + good + "]", Malformed()},
        {"200 OK", "<html>", Malformed()}, {"200 OK", "", Malformed()},
        {"201 Created", good, Unavailable()}, {"302 Found", good, Unavailable()},
        {"500 No", good, Unavailable()}, {"rubbish", good, Unavailable()}};
    for (const auto &[status, body, outcome] : rows) {
        const LoopbackServer server(LoopbackServer::http(status, body));
        EXPECT_EQ(awaited(fetch(u"1.2 +ä&os=x#%"_qs, server.root(), &owner)), outcome)
            << status << ' ' << body.constData();
        const QByteArray request = server.requests().value(0);
        EXPECT_TRUE(request.startsWith(
            "GET /api/version?os=macos&v=1.2%20%2B%C3%A4%26os%3Dx%23%25 HTTP/1.1\r\n"))
            << request.constData();
    }
    LoopbackServer::trust(false);
}

} // namespace
