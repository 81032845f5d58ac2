#include "sources/HttpGet.h"

#include "awaited.h"
#include "LoopbackServer.h"
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

TEST(HttpGet, givesUpOnAServerThatHangs)
{
    LoopbackServer::trust(true);
    const LoopbackServer server(
        "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n{", LoopbackServer::Then::Hang);
    QObject owner;
    for (const HttpGet::Patience patience :
        {HttpGet::Patience {50ms, 60s}, HttpGet::Patience {60s, 300ms}}) {
        const QNetworkRequest request {QUrl(server.root())};
        const auto reply = awaited(HttpGet::start(request, patience, &owner));
        EXPECT_TRUE(reply && !*reply);
    }
    EXPECT_EQ(server.requests().size(), 2);
    LoopbackServer::trust(false);
}

} // namespace
