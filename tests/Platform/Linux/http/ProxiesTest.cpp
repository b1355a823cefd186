#include "HttpFixture.h"

#include <cstdlib>

namespace quillon {
namespace {

struct HttpProxiesTest : HttpFixture {
    HttpProxiesTest() {
        for (const char* variable : {"http_proxy", "all_proxy"}) {
            ::setenv(variable, proxy.address("").c_str(), 1);
        }
        ::unsetenv("no_proxy");
        ::unsetenv("NO_PROXY");
    }
    HttpProxiesTest(const HttpProxiesTest&) = delete;
    HttpProxiesTest& operator=(const HttpProxiesTest&) = delete;
    ~HttpProxiesTest() override {
        ::unsetenv("http_proxy");
        ::unsetenv("all_proxy");
    }
    FeedServer proxy{[](const std::string& asked, QTcpSocket& client) {
        const bool onward = asked.starts_with("GET http://away.invalid/");
        client.write(onward ? httpAnswer("302 Found", "", "Location: http://localhost:1/\r\n")
                            : httpAnswer("200 OK", "by proxy"));
    }};
};

TEST_F(HttpProxiesTest, AreUsedAsTheEnvironmentSays) {
    EXPECT_EQ(fetch("http://example.invalid/x"), "200 by proxy");
    ASSERT_EQ(proxy.requests.size(), 1);
    EXPECT_TRUE(proxy.requests[0].starts_with("GET http://example.invalid/x HTTP/1.1\r\n"));
    ::setenv("no_proxy", "example.invalid", 1);
    EXPECT_EQ(fetch("http://example.invalid/x"),
              "[the server was not found; is this computer online?]");
}

TEST_F(HttpProxiesTest, AreNeverUsedForThisComputer) {
    FeedServer server([](const std::string&, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", "direct"));
    });
    const std::string port = server.address("").substr(std::string("http://127.0.0.1").size());
    for (const char* host : {"localhost", "127.0.0.1", "LocalHost", "2130706433"}) {
        EXPECT_EQ(fetch("http://" + std::string(host) + port + "/"), "200 direct") << host;
    }
    EXPECT_EQ(fetch("http://away.invalid/"), "[the server does not answer]"); // after a redirect
    EXPECT_EQ(proxy.requests.size(), 1);
}

} // namespace
} // namespace quillon
