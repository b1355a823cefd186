#include "HttpFixture.h"

namespace quillon {
namespace {

using HttpAnswersTest = HttpFixture;

constexpr const char* senseless = "[the server's answer makes no sense]";

TEST_F(HttpAnswersTest, AnswersStatusAndBody) {
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "text")), "200 text");
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "")), "200 ");
    EXPECT_EQ(fetchAnswer("HTTP/1.1 204 No Content\r\n\r\n"), "204 ");
    EXPECT_EQ(fetchAnswer(httpAnswer("404 Not Found", "no")), "404 no");
    EXPECT_EQ(fetchAnswer(httpAnswer("500 Oops", "")), "500 ");
    EXPECT_EQ(fetchAnswer(httpAnswer("401 Who", "", "WWW-Authenticate: Basic realm=\"x\"\r\n")),
              "401 ");
    EXPECT_EQ(fetchAnswer("HTTP/1.0 200 OK\r\n\r\nto the end"), "200 to the end");
    EXPECT_EQ(fetchAnswer("HTTP/1.1 103 Early Hints\r\nLocation: /no\r\n\r\n" +
                          httpAnswer("200 OK", "late")),
              "200 late");
}

TEST_F(HttpAnswersTest, ReadsChunksAndIgnoresWhatTrails) {
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                          "3\r\nabc\r\n2\r\nde\r\n0\r\nLocation: file:///\r\n\r\n"),
              "200 abcde");
    EXPECT_EQ(fetchAnswer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nab"),
              "[the server broke the connection off]");
}

TEST_F(HttpAnswersTest, UnpacksWhatItAskedForAndNoOther) {
    // What qCompress makes is "deflate" behind four bytes of its own.
    const std::string packed = qCompress(QByteArray("packed")).mid(4).toStdString();
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", packed, "Content-Encoding: deflate\r\n")),
              "200 packed");
    EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "no gzip at all", "Content-Encoding: gzip\r\n")),
              senseless);
    for (const char* other : {"Content-Encoding: zstd\r\n", "content-encoding: gzip, br\r\n",
                              "Transfer-Encoding: br, chunked\r\n"}) {
        EXPECT_EQ(fetchAnswer(httpAnswer("200 OK", "x", other)), senseless) << other;
    }
}

TEST_F(HttpAnswersTest, SaysNothingAboutTheUser) {
    FeedServer server([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "x", "Set-Cookie: who=you; Path=/\r\nETag: \"1\"\r\n"));
    });
    EXPECT_EQ(fetch(server.address("/file?x=1#part")), "200 x");
    EXPECT_EQ(fetch(server.address("/file?x=1")), "200 x");
    ASSERT_EQ(server.requests.size(), 2);
    EXPECT_EQ(server.requests[0], server.requests[1]);
    const auto host = server.address("").substr(std::string("http://").size());
    EXPECT_EQ(server.requests[0], "GET /file?x=1 HTTP/1.1\r\n"
                                  "Host: " +
                                      host +
                                      "\r\n"
                                      "User-Agent: Quillon/0.1.0\r\n"
                                      "Accept: */*\r\n"
                                      "Accept-Encoding: gzip\r\n"
                                      "Cache-Control: no-cache\r\n\r\n");
}

TEST_F(HttpAnswersTest, WhatIsNoAnswerIsTold) {
    EXPECT_EQ(fetchAnswer("SSH-2.0-OpenSSH\r\n"), senseless);
    EXPECT_EQ(fetchAnswer(""), "[the server broke the connection off]");
    EXPECT_EQ(fetchAnswer("HTTP/1.1 101 Switching\r\n\r\nx"), senseless);
}

TEST_F(HttpAnswersTest, AddressesThatMakeNoneAreTold) {
    EXPECT_EQ(fetch(""), "[the address is not valid]");
    EXPECT_EQ(fetch("example.org"), "[the address is not valid]");
    EXPECT_EQ(fetch("http://"), "[the address is not valid]");
    EXPECT_EQ(fetch("file:///etc/passwd"), "[the address is not one of the web]");
    EXPECT_EQ(fetch("ftp://127.0.0.1/"), "[the address is not one of the web]");
}

TEST_F(HttpAnswersTest, SecureServersMustBeTrusted) {
    FeedServer secure(
        [](const std::string&, QTcpSocket& client) { client.write(httpAnswer("200 OK", "safe")); },
        FeedServer::Kind::secure);
    EXPECT_EQ(fetch(secure.address("/")), "200 safe");
    settings.certificates.clear();
    session.emplace(loop, settings);
    EXPECT_EQ(fetch(secure.address("/")), "[the connection to the server is not secure]");
    EXPECT_EQ(secure.requests.size(), 1);
}

} // namespace
} // namespace quillon
