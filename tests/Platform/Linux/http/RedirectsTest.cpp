#include "HttpFixture.h"

namespace quillon {
namespace {

using HttpRedirectsTest = HttpFixture;

constexpr const char* insecure = "[the server refers to an address that is not secure]";
constexpr const char* endless = "[the server refers from one address to the next without end]";

QByteArray redirectTo(const std::string& location, const std::string& status = "302 Found") {
    return httpAnswer(status, "elsewhere", "Location: " + location + "\r\n");
}

TEST_F(HttpRedirectsTest, FollowsAsManyAsTen) {
    FeedServer server([](const std::string& asked, QTcpSocket& client) {
        const int step = std::stoi(asked.substr(5));
        client.write(step == 0 ? httpAnswer("200 OK", "here")
                               : redirectTo("/" + std::to_string(step - 1)));
    });
    EXPECT_EQ(fetch(server.address("/1")), "200 here");
    EXPECT_EQ(fetch(server.address("/10")), "200 here");
    server.requests.clear();
    EXPECT_EQ(fetch(server.address("/11")), endless);
    EXPECT_EQ(server.requests.size(), 11);
}

TEST_F(HttpRedirectsTest, FollowsEachKind) {
    for (const char* status : {"301 a", "302 a", "303 a", "307 a", "308 a"}) {
        FeedServer server([&](const std::string& asked, QTcpSocket& client) {
            client.write(asked == "GET /a%20b?c HTTP/1.1" ? httpAnswer("200 OK", "here")
                                                          : redirectTo("a b?c#d", status));
        });
        EXPECT_EQ(fetch(server.address("/")), "200 here") << status;
    }
    EXPECT_EQ(fetchAnswer(redirectTo("/", "304 Not Modified")), "304 ");
    EXPECT_EQ(fetchAnswer(redirectTo("/", "300 Choose")), "300 elsewhere");
    EXPECT_EQ(fetchAnswer(httpAnswer("302 Found", "nowhere")), "302 nowhere");
}

TEST_F(HttpRedirectsTest, BodiesOfRedirectsAreNotWaitedFor) {
    FeedServer circle([](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 301 Moved\r\nLocation: /circle\r\n\r\n");
        writeForEver(client, QByteArray(1000, 'x'));
    });
    EXPECT_EQ(fetch(circle.address("/")), endless);
}

TEST_F(HttpRedirectsTest, LeaveTheWebForNothing) {
    for (const char* bad :
         {"file:///etc/passwd", "ftp://127.0.0.1/", "data:text/plain,x", "FILE:/etc/passwd"}) {
        EXPECT_EQ(fetchAnswer(redirectTo(bad)), insecure) << bad;
    }
    EXPECT_EQ(fetchAnswer(redirectTo("//")), "[the server's answer makes no sense]");
}

TEST_F(HttpRedirectsTest, AreFollowedOnlyAsTheRequestAllows) {
    FeedServer server([](const std::string& asked, QTcpSocket& client) {
        client.write(asked.starts_with("GET /2 ")   ? httpAnswer("200 OK", "here")
                     : asked.starts_with("GET /1 ") ? redirectTo("/2")
                                                    : redirectTo("/1"));
    });
    request.mayRedirect = [](const std::string& from, const std::string& to) {
        return from.back() + 1 == to.back();
    };
    EXPECT_EQ(fetch(server.address("/0")), "200 here");
    request.mayRedirect = [](const std::string&, const std::string& to) { return to.back() < '2'; };
    EXPECT_EQ(fetch(server.address("/0")), insecure);
    request.mayRedirect = nullptr;
    request.mostRedirects = 1;
    EXPECT_EQ(fetch(server.address("/1")), "200 here");
    EXPECT_EQ(fetch(server.address("/0")), endless);
}

TEST_F(HttpRedirectsTest, NeverGoFromSecureToLess) {
    FeedServer plain([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "plain"));
    });
    FeedServer secure(
        [&](const std::string& asked, QTcpSocket& client) {
            client.write(asked.starts_with("GET /file ")    ? httpAnswer("200 OK", "secure")
                         : asked.starts_with("GET /twice ") ? redirectTo("/down")
                                                            : redirectTo(plain.address("/")));
        },
        FeedServer::Kind::secure);
    FeedServer up([&](const std::string& asked, QTcpSocket& client) {
        client.write(redirectTo(secure.address(asked.substr(4, asked.rfind(' ') - 4))));
    });
    EXPECT_EQ(fetch(up.address("/file")), "200 secure");
    EXPECT_EQ(fetch(up.address("/down")), insecure);
    EXPECT_EQ(fetch(secure.address("/twice")), insecure);
    EXPECT_TRUE(plain.requests.empty());
}

TEST_F(HttpRedirectsTest, ForgetCookiesAndTellNobodyElseTheUser) {
    FeedServer other([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "other"));
    });
    FeedServer first([&](const std::string& asked, QTcpSocket& client) {
        const std::string to = asked.starts_with("GET /same ") ? "/on" : other.address("/");
        client.write(
            httpAnswer("302 Found", "", "Set-Cookie: who=you; Path=/\r\nLocation: " + to + "\r\n"));
    });
    EXPECT_EQ(fetch("http://me:secret@" + first.address("/same").substr(7)), "200 other");
    ASSERT_EQ(first.requests.size(), 2);
    EXPECT_NE(first.requests[0].find("Authorization: Basic"), std::string::npos);
    ASSERT_EQ(other.requests.size(), 1);
    for (const char* secret : {"Authorization", "Cookie", "Referer"}) {
        EXPECT_EQ(other.requests[0].find(secret), std::string::npos) << secret;
    }
    EXPECT_EQ(first.requests[1].find("Cookie"), std::string::npos);
}

} // namespace
} // namespace quillon
