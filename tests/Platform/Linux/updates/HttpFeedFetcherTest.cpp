#include "Platform/Linux/updates/HttpFeedFetcher.h"

#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/updates/FeedServer.h"
#include "Platform/Linux/updates/TestCertificate.h"

#include <QCoreApplication>
#include <QHostAddress>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace quillon {
namespace {

struct HttpFeedFetcherTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtRunLoop loop;
    UrlSettings settings{.userAgent = "Quillon/0.1.0", .certificates = testCertificate};
    HttpFeedFetcher fetcher{loop, settings};
    std::unique_ptr<FeedFetch> running;
    std::optional<FetchedFeed> result;

    void begin(const std::string& address, HttpFeedFetcher& from) {
        result.reset();
        running = from.fetch(address, [this](FetchedFeed fetched) {
            EXPECT_FALSE(result) << "completed twice";
            result = std::move(fetched);
            running.reset(); // as the caller does
            loop.quit(0);
        });
        EXPECT_FALSE(result) << "completed too early";
    }

    /// Runs until the loop is quit, or fails after a limit that no passing test reaches.
    void run() {
        constexpr double limit = 45; // a name server may be slow to be given up
        const TimerRef guard = loop.asyncAfter(limit, [this] { loop.quit(99); });
        EXPECT_EQ(loop.run(), 0);
        guard->cancel();
    }

    /// The text, or the reason in brackets.
    std::string fetch(const std::string& address) { return fetch(address, fetcher); }
    std::string fetch(const std::string& address, HttpFeedFetcher& from) {
        begin(address, from);
        run();
        running.reset();
        if (!result) {
            return "nothing";
        }
        const auto* failure = std::get_if<FeedFailure>(&*result);
        return failure == nullptr ? std::get<std::string>(*result) : "[" + failure->reason + "]";
    }

    /// What the fetcher makes of a server that answers with these bytes and closes.
    std::string fetchAnswer(const QByteArray& answer) {
        FeedServer server([&](const std::string&, QTcpSocket& client) {
            client.write(answer);
            client.disconnectFromHost();
        });
        return fetch(server.address("/feed"));
    }
};

/// Writes the same over and over, as fast as it is taken.
void writeForEver(QTcpSocket& client, const QByteArray& piece) {
    QObject::connect(&client, &QTcpSocket::bytesWritten, &client, [&client, piece] {
        if (client.bytesToWrite() < piece.size()) {
            client.write(piece);
        }
    });
    client.write(piece);
}

constexpr const char* insecure = "[the server refers to an address that is not secure]";
constexpr const char* senseless = "[the server's answer makes no sense]";
constexpr const char* tooLarge = "[the server's answer is too large]";

TEST_F(HttpFeedFetcherTest, AnswersTheBytes) {
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "<rss/>")), "<rss/>");
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "")), "");
    EXPECT_EQ(fetchAnswer("HTTP/1.0 200 OK\r\n\r\nto the end"), "to the end");
    const std::string large(HttpFeedFetcher::largestFeed, 'x');
    EXPECT_TRUE(fetchAnswer(httpAnswer("200 OK", large)) == large);
}

TEST_F(HttpFeedFetcherTest, SaysNothingAboutTheUser) {
    FeedServer server([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "feed", "Set-Cookie: who=you\r\nETag: \"1\"\r\n"));
    });
    EXPECT_EQ(fetch(server.address("/feed?x=1#part")), "feed");
    EXPECT_EQ(fetch(server.address("/feed?x=1")), "feed");
    ASSERT_EQ(server.requests.size(), 2);
    EXPECT_EQ(server.requests[0], server.requests[1]);
    const auto host = server.address("").substr(std::string("http://").size());
    EXPECT_EQ(server.requests[0], "GET /feed?x=1 HTTP/1.1\r\n"
                                  "Host: " +
                                      host +
                                      "\r\n"
                                      "User-Agent: Quillon/0.1.0\r\n"
                                      "Accept: */*\r\n"
                                      "Accept-Encoding: gzip\r\n"
                                      "Cache-Control: no-cache\r\n\r\n");
}

TEST_F(HttpFeedFetcherTest, KeepsNoCookiesOnTheWay) {
    FeedServer server([](const std::string& request, QTcpSocket& client) {
        client.write(request.starts_with("GET /feed ")
                         ? httpAnswer("200 OK", "feed")
                         : httpAnswer("302 Found", "",
                                      "Location: /feed\r\nSet-Cookie: who=you; Path=/\r\n"));
    });
    EXPECT_EQ(fetch(server.address("/")), "feed");
    ASSERT_EQ(server.requests.size(), 2);
    EXPECT_EQ(server.requests[1].find("Cookie"), std::string::npos);
    EXPECT_EQ(server.requests[1].find("Referer"), std::string::npos);
}

TEST_F(HttpFeedFetcherTest, ErrorsOfTheServerAreTold) {
    EXPECT_EQ(fetchAnswer(httpAnswer("404 Not Found", "<rss/>")),
              "[the server answered with error 404]");
    EXPECT_EQ(fetchAnswer(httpAnswer("500 Oops", "")), "[the server answered with error 500]");
    EXPECT_EQ(fetchAnswer(httpAnswer("401 Who", "", "WWW-Authenticate: Basic realm=\"you\"\r\n")),
              "[the server answered with error 401]");
    EXPECT_EQ(fetchAnswer(httpAnswer("304 Not Modified", "")), senseless);
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "not packed", "Content-Encoding: gzip\r\n")),
              senseless);
}

TEST_F(HttpFeedFetcherTest, BrokenAnswersAreTold) {
    EXPECT_EQ(fetchAnswer("SSH-2.0-OpenSSH\r\n"), senseless);
    EXPECT_EQ(fetchAnswer(""), "[the server broke the connection off]");
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<rss/>"),
              "[the server broke the connection off]");
}

TEST_F(HttpFeedFetcherTest, NothingEndlessIsReadToItsEnd) {
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", std::string(HttpFeedFetcher::largestFeed + 1, 'x'))),
              tooLarge);
    FeedServer endless([](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 200 OK\r\n\r\n");
        writeForEver(client, QByteArray(100'000, 'x'));
    });
    EXPECT_EQ(fetch(endless.address("/")), tooLarge);
    FeedServer chunks([](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        writeForEver(client, "1000\r\n" + QByteArray(0x1000, 'x') + "\r\n");
    });
    EXPECT_EQ(fetch(chunks.address("/")), tooLarge);
}

TEST_F(HttpFeedFetcherTest, FollowsAFewRedirects) {
    FeedServer server([](const std::string& request, QTcpSocket& client) {
        const int step = request[5] - '0';
        client.write(step == 0 ? httpAnswer("200 OK", "here")
                               : httpAnswer("302 Found", "elsewhere",
                                            "Location: /" + std::to_string(step - 1) + "\r\n"));
        client.disconnectFromHost();
    });
    EXPECT_EQ(fetch(server.address("/1")), "here");
    EXPECT_EQ(fetch(server.address("/5")), "here");
    const std::string endless = "[the server refers from one address to the next without end]";
    EXPECT_EQ(fetch(server.address("/6")), endless);
    FeedServer circle([](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 301 Moved\r\nLocation: /circle\r\n\r\n");
        writeForEver(client, QByteArray(1000, 'x')); // a body is not waited for
    });
    EXPECT_EQ(fetch(circle.address("/")), endless);
}

TEST_F(HttpFeedFetcherTest, FollowsNoRedirectToAnythingWeaker) {
    for (const char* bad : {"http://example.org/", "file:///etc/passwd", "ftp://127.0.0.1/",
                            "data:text/plain,x", "//example.org/feed"}) {
        EXPECT_EQ(
            fetchAnswer(httpAnswer("302 Found", "", "Location: " + std::string(bad) + "\r\n")),
            insecure)
            << bad;
    }
    EXPECT_EQ(fetchAnswer(httpAnswer("302 Found", "")), senseless);
}

TEST_F(HttpFeedFetcherTest, SecureServersMustBeTrusted) {
    FeedServer plain([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "plain"));
    });
    FeedServer secure(
        [&](const std::string& request, QTcpSocket& client) {
            client.write(
                request.starts_with("GET /feed ")
                    ? httpAnswer("200 OK", "secure")
                    : httpAnswer("302 Found", "", "Location: " + plain.address("/feed") + "\r\n"));
        },
        FeedServer::Kind::secure);
    HttpFeedFetcher untrusting(loop, UrlSettings{.userAgent = "Quillon/0.1.0"});
    EXPECT_EQ(fetch(secure.address("/feed"), untrusting),
              "[the connection to the server is not secure]");
    EXPECT_TRUE(secure.requests.empty());
    EXPECT_EQ(fetch(secure.address("/feed")), "secure");
    EXPECT_EQ(fetch(secure.address("/down")), insecure);
    EXPECT_TRUE(plain.requests.empty());
    FeedServer up([&](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("302 Found", "", "Location: " + secure.address("/feed") + "\r\n"));
    });
    EXPECT_EQ(fetch(up.address("/")), "secure");
}

TEST_F(HttpFeedFetcherTest, WhatSpeaksNoTlsIsNotSecure) {
    QTcpServer plain;
    QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&plain] {
        plain.nextPendingConnection()->write("HTTP/1.1 400 What?\r\n\r\n");
    });
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    EXPECT_EQ(fetch("https://127.0.0.1:" + std::to_string(plain.serverPort()) + "/"),
              "[the connection to the server is not secure]");
}

TEST_F(HttpFeedFetcherTest, UnreachableServersAreTold) {
    std::string gone;
    {
        FeedServer server([](const std::string&, QTcpSocket&) {});
        gone = server.address("/");
    }
    EXPECT_EQ(fetch(gone), "[the server does not answer]");
    EXPECT_EQ(fetch("https://nobody.invalid/feed"),
              "[the server was not found; is this computer online?]");
}

TEST_F(HttpFeedFetcherTest, CancelledItIsSilentAndHangsUp) {
    FeedServer silent([this](const std::string&, QTcpSocket& client) {
        QObject::connect(&client, &QTcpSocket::disconnected, &client, [this] { loop.quit(0); });
        loop.async([this] { running.reset(); });
    });
    begin(silent.address("/"), fetcher);
    run();
    EXPECT_FALSE(result);
    EXPECT_EQ(silent.connections(), 0);
    begin(silent.address("/"), fetcher); // nor one that has not even connected
    running.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(result);
}

} // namespace
} // namespace quillon
