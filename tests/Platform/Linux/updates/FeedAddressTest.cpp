#include "Platform/Linux/updates/FeedAddress.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(FeedAddressTest, HttpsOrThisComputer) {
    for (const char* address :
         {"https://example.org/feed.xml", "HTTPS://example.org", " https://example.org/ \n",
          "http://127.0.0.1:8080/feed", "http://127.1.2.3/", "http://[::1]:80/", "http://localhost",
          "http://LOCALHOST:1/feed"}) {
        EXPECT_TRUE(mayFetch(feedUrl(address))) << address;
    }
    for (const char* address : {"",
                                "feed.xml",
                                "/feed.xml",
                                "http://example.org/",
                                "http://128.0.0.1/",
                                "http://0.0.0.0/",
                                "http://[::]/",
                                "http://[fe80::1]/",
                                "http://localhost.example.org/",
                                "http://localhost@example.org/",
                                "http://127.0.0.1.example.org/",
                                "http://10.0.0.1",
                                "file:///etc/passwd",
                                "ftp://localhost/",
                                "data:text/xml,<rss/>",
                                "https://",
                                "https:///x",
                                "https:feed",
                                "https://exa mple.org",
                                "qrc:/x",
                                "unix+http://localhost/"}) {
        EXPECT_FALSE(mayFetch(feedUrl(address))) << address;
    }
}

TEST(FeedAddressTest, ServersSendUsOnToNothingWeaker) {
    const QUrl secure = feedUrl("https://example.org/");
    const QUrl local = feedUrl("http://127.0.0.1/");
    EXPECT_TRUE(mayRedirect(secure, feedUrl("https://example.com/")));
    EXPECT_TRUE(mayRedirect(local, secure));
    EXPECT_TRUE(mayRedirect(local, feedUrl("http://localhost/")));
    EXPECT_FALSE(mayRedirect(secure, local));
    EXPECT_FALSE(mayRedirect(local, feedUrl("http://example.org/")));
    EXPECT_FALSE(mayRedirect(local, feedUrl("file:///etc/passwd")));
}

} // namespace
} // namespace quillon
