#include "HttpFixture.h"

#include <QHostAddress>

namespace quillon {
namespace {

using HttpFailuresTest = HttpFixture;

constexpr const char* brokenOff = "[the server broke the connection off]";
constexpr const char* notFound = "[the server was not found; is this computer online?]";

TEST_F(HttpFailuresTest, ConnectionsThatBreakOffAreTold) {
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this"), brokenOff);
    FeedServer before([](const std::string&, QTcpSocket& client) { reset(client); });
    EXPECT_EQ(fetch(before.address("/")), brokenOff);
    FeedServer midway([](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        client.write(QByteArray(100, 'x'));
        client.flush();
        reset(client);
    });
    EXPECT_EQ(fetch(midway.address("/")), brokenOff);
}

TEST_F(HttpFailuresTest, ServersThatAreNotThereAreTold) {
    std::string gone;
    {
        FeedServer server([](const std::string&, QTcpSocket&) {});
        gone = server.address("/");
    }
    EXPECT_EQ(fetch(gone), "[the server does not answer]");
    EXPECT_EQ(fetch("https://nobody.invalid/"), notFound);
}

TEST_F(HttpFailuresTest, OneThatAcceptsButSpeaksNoTlsIsGivenUp) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    request.patience = 0.3;
    EXPECT_EQ(fetch("https://127.0.0.1:" + std::to_string(silent.serverPort()) + "/"), tooSlow);
    QTcpServer plain;
    QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&plain] {
        plain.nextPendingConnection()->write("HTTP/1.1 400 What?\r\n\r\n");
    });
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    request.patience = 20;
    EXPECT_EQ(fetch("https://127.0.0.1:" + std::to_string(plain.serverPort()) + "/"),
              "[the connection to the server is not secure]");
}

TEST_F(HttpFailuresTest, NobodyWaitsForANameServerThatHangs) {
    const HeldNames held;
    request.patience = 0.3;
    EXPECT_EQ(fetch("http://slow.held.invalid/"), tooSlow);
    EXPECT_EQ(HeldNames::held(), 1);
    runUntil([] { return httpThreads() == 0; });

    request.patience = 20;
    begin("http://cancelled.held.invalid/");
    runUntil([] { return HeldNames::held() == 2; });
    running.reset();
    runUntil([] { return httpThreads() == 0; });

    begin("http://ended.held.invalid/");
    runUntil([] { return HeldNames::held() == 3; });
    session.reset();
    runUntil([] { return httpThreads() == 0; });
    runOn();
    EXPECT_FALSE(result);
}

} // namespace
} // namespace quillon
