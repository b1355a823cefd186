#include "HttpFixture.h"

#include <QTimer>

#include <fstream>

namespace quillon {
namespace {

constexpr const char* tooLarge = "[the server's answer is too large]";

struct HttpLimitsTest : HttpFixture {
    /// Kilobytes that this process has had in memory at most since the last forgetPeak().
    static long peak() {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            if (long size = 0; word == "VmHWM:" && status >> size) {
                return size;
            }
        }
        return 0;
    }
    static void forgetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

    /// Fetches, and expects that hardly any memory was needed.
    std::string fetchModestly(const std::string& address) {
        forgetPeak();
        const long before = peak();
        EXPECT_GT(before, 0);
        const std::string outcome = fetch(address);
#ifndef QUILLON_SANITIZED // which keeps what is freed for a while
        constexpr long modest = 24'000;
        EXPECT_LT(peak() - before, modest);
#endif
        return outcome;
    }
    std::string fetchAnswerOf(const FeedServer::Answer& answer) {
        FeedServer server(answer);
        return fetchModestly(server.address("/"));
    }
};

TEST_F(HttpLimitsTest, BodiesMayBeAsLargeAsIsSaid) {
    request.largestBody = 5;
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "12345")), "200 12345");
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "123456")), tooLarge);
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\n\r\n123456"), tooLarge);
    request.largestBody = 0;
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "")), "200 ");
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "1")), tooLarge);
}

TEST_F(HttpLimitsTest, AGigabyteEndsWithItsHeadIfThatSaysSo) {
    // Nothing of the body is ever sent, so it is the head that ends it.
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n");
              }),
              tooLarge);
}

TEST_F(HttpLimitsTest, WhatHasNoEndIsReadUpToTheLimit) {
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\n\r\n");
                  writeForEver(client, QByteArray(100'000, 'x'));
              }),
              tooLarge);
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
                  writeForEver(client, "1000\r\n" + QByteArray(0x1000, 'x') + "\r\n");
              }),
              tooLarge);
}

TEST_F(HttpLimitsTest, SmallAnswersDoNotUnpackIntoHugeOnes) {
    const QByteArray bomb = qCompress(QByteArray(100'000'000, '\0')).mid(4);
    ASSERT_LT(bomb.size(), 1'000'000);
    for (const char* how : {"", "Content-Length: 999999\r\n"}) {
        EXPECT_EQ(fetchAnswerOf([&](const std::string&, QTcpSocket& client) {
                      client.write("HTTP/1.1 200 OK\r\nContent-Encoding: deflate\r\n" +
                                   QByteArray(how) + "\r\n");
                      client.write(bomb);
                  }),
                  tooLarge);
    }
}

TEST_F(HttpLimitsTest, HeadersEnd) {
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\n");
                  writeForEver(client, QByteArray("X-Long: and so on\r\n").repeated(1000));
              }),
              tooLarge);
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\nX-Endless: ");
                  writeForEver(client, QByteArray(10'000, 'x'));
              }),
              tooLarge);
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  writeForEver(client, QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(100));
              }),
              tooLarge);
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n");
                  writeForEver(client, QByteArray("X-Long: and so on\r\n").repeated(100));
              }),
              tooLarge);
    const std::string many(200'000, 'x');
    QByteArray fields;
    for (std::size_t at = 0; at < many.size(); at += 50'000) {
        fields += "X-Long: " + QByteArray::fromStdString(many.substr(at, 50'000)) + "\r\n";
    }
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\n" + fields + "\r\nx"), "200 x");
}

TEST_F(HttpLimitsTest, AServerThatDawdlesIsGivenUp) {
    request.patience = 0.3;
    const double begun = loop.uptime();
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket&) {}), tooSlow);
    EXPECT_EQ(fetchAnswerOf([](const std::string&, QTcpSocket& client) {
                  client.write("HTTP/1.1 200 OK\r\n\r\n");
                  auto* timer = new QTimer(&client);
                  QObject::connect(timer, &QTimer::timeout, &client,
                                   [&client] { client.write("x"); });
                  timer->start(50);
              }),
              tooSlow);
    EXPECT_GE(loop.uptime() - begun, 2 * request.patience);
    EXPECT_LT(loop.uptime() - begun, 5);
}

TEST_F(HttpLimitsTest, OneThatIsLivelyIsWaitedForUpToTheWholeLimit) {
    request.patience = 0.2;
    const FeedServer::Answer lively = [](const std::string& asked, QTcpSocket& client) {
        const int last = asked.starts_with("GET /short ") ? 12 : 1'000'000;
        client.write("HTTP/1.1 200 OK\r\n\r\n");
        auto* timer = new QTimer(&client);
        QObject::connect(timer, &QTimer::timeout, &client, [&client, last, sent = 0]() mutable {
            client.write(QByteArray(50, 'x'));
            if (++sent == last) {
                client.disconnectFromHost();
            }
        });
        timer->start(50);
    };
    FeedServer server(lively);
    EXPECT_EQ(fetch(server.address("/short")), "200 " + std::string(600, 'x'));
    settings.longestExchange = 0.7;
    session.emplace(loop, settings);
    EXPECT_EQ(fetch(server.address("/long")), tooSlow);
}

} // namespace
} // namespace quillon
