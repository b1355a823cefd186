#include "Platform/Linux/updates/Appcast.h"

#include "Platform/Linux/updates/Feeds.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quillon {
namespace {

Appcast read(const std::string& feed) {
    auto parsed = parseAppcast(feed);
    if (const auto* failure = std::get_if<FeedFailure>(&parsed)) {
        ADD_FAILURE() << failure->reason;
        return {};
    }
    return std::get<Appcast>(std::move(parsed));
}

std::string failureOf(std::string_view feed) {
    const auto parsed = parseAppcast(feed);
    const auto* failure = std::get_if<FeedFailure>(&parsed);
    return failure == nullptr ? "" : failure->reason;
}

constexpr const char* noFeed = "it is not an update feed";
constexpr const char* webPage = "the server sent a web page instead";

TEST(AppcastTest, ReadsAttributesOfTheEnclosure) {
    const auto feed = read(feedOf(R"(<item><title>2</title><link> https://example.org/2
        </link><v:releaseNotesLink>https://example.org/notes</v:releaseNotesLink>
        <enclosure url="u" v:version="200" v:shortVersionString="2.0" v:os="macos"/></item>)"));
    ASSERT_EQ(feed.items.size(), 1);
    EXPECT_EQ(feed.link, "https://example.org/all");
    const auto& item = feed.items[0];
    EXPECT_EQ(item.link, "https://example.org/2");
    EXPECT_EQ(item.releaseNotesLink, "https://example.org/notes");
    EXPECT_FALSE(item.isOnChannel);
    ASSERT_EQ(item.enclosures.size(), 1);
    EXPECT_EQ(item.enclosures[0].version, "200");
    EXPECT_EQ(item.enclosures[0].shortVersion, "2.0");
    EXPECT_EQ(item.enclosures[0].os, "macos");
}

TEST(AppcastTest, ReadsElementsOfTheItem) {
    const auto feed = read(feedOf(R"(<item><v:version>200</v:version>
        <v:shortVersionString><![CDATA[2.]]><!-- - -->0</v:shortVersionString>
        <v:channel>beta</v:channel></item>)"));
    ASSERT_EQ(feed.items.size(), 1);
    EXPECT_EQ(feed.items[0].version, "200");
    EXPECT_EQ(feed.items[0].shortVersion, "2.0");
    EXPECT_TRUE(feed.items[0].isOnChannel);
    EXPECT_TRUE(feed.items[0].enclosures.empty());
}

TEST(AppcastTest, TheNamespaceMayBeAnyOrNone) {
    for (const char* feed :
         {R"(<rss xmlns:a="x:y"><channel><item><enclosure a:version="3"/></item></channel></rss>)",
          R"(<rss><channel><item><enclosure version="3"/></item></channel></rss>)",
          R"(<rss xmlns="d:d"><channel><item><enclosure version="3"/></item></channel></rss>)"}) {
        const auto appcast = read(feed);
        ASSERT_EQ(appcast.items.size(), 1) << feed;
        ASSERT_EQ(appcast.items[0].enclosures.size(), 1) << feed;
        EXPECT_EQ(appcast.items[0].enclosures[0].version, "3") << feed;
    }
}

TEST(AppcastTest, WhatOtherVocabulariesCallALinkIsNone) {
    const auto feed = read(feedOf("<atom:link href='h'>https://example.org/atom</atom:link>"
                                  "<item><atom:link>https://example.org/atom</atom:link>"
                                  "<v:enclosure v:version='9'/></item>"));
    EXPECT_EQ(feed.link, "https://example.org/all");
    EXPECT_EQ(feed.items.at(0).link, "");
    EXPECT_TRUE(feed.items.at(0).enclosures.empty());
}

TEST(AppcastTest, WhatLiesDeeperIsNotTheItems) {
    const auto feed = read(feedOf("<item><v:deltas><enclosure v:version='7'/><link>no</link>"
                                  "</v:deltas><link>https://<b>not</b>example.org</link></item>"
                                  "<image><link>https://example.org/image</link></image>"));
    EXPECT_TRUE(feed.items.at(0).enclosures.empty());
    EXPECT_EQ(feed.items.at(0).link, "https://example.org");
    EXPECT_EQ(feed.link, "https://example.org/all");
}

TEST(AppcastTest, OtherEncodingsAreReadWhenTheySaySo) {
    const std::string latin = "<?xml version='1.0' encoding='iso-8859-1'?><rss><channel><item>"
                              "<version>2\xe4</version></item></channel></rss>";
    EXPECT_EQ(read(latin).items.at(0).version, "2ä");
    EXPECT_EQ(failureOf("<?xml version='1.0'?><rss><channel>\xe4</channel></rss>"),
              "it is damaged in line 1");
    EXPECT_EQ(failureOf("<?xml version='1.0' encoding='klingon'?><rss><channel/></rss>"),
              "it is damaged in line 1");
}

TEST(AppcastTest, WhatIsNoFeedIsRefused) {
    EXPECT_EQ(failureOf(""), "it is empty");
    EXPECT_EQ(failureOf("<!DOCTYPE html><html><body>Log in</body></html>"), webPage);
    EXPECT_EQ(failureOf("\n<!doctype HTML><br>"), webPage);
    EXPECT_EQ(failureOf("<HTML><br></HTML>"), webPage);
    EXPECT_EQ(failureOf("<feed xmlns='http://www.w3.org/2005/Atom'/>"), noFeed);
    EXPECT_EQ(failureOf("<rss/>"), noFeed);
    EXPECT_EQ(failureOf("<rss><rss><channel/></rss></rss>"), noFeed);
    EXPECT_EQ(failureOf("{\"version\": 2}"), "it is damaged in line 1");
    EXPECT_EQ(failureOf(std::string(5000, '\0')), "it is damaged in line 1");
    EXPECT_EQ(failureOf("<rss>\n<channel>\n<item>\n</channel></rss>"), "it is damaged in line 4");
    const std::string whole = feedOf(itemOf("2"));
    EXPECT_EQ(failureOf(whole), "");
    // Nothing but the line end after the last tag can be lost.
    for (std::size_t size = 0; size < whole.size() - 1; ++size) {
        ASSERT_NE(failureOf(whole.substr(0, size)), "") << size;
    }
}

TEST(AppcastTest, NothingGrowsFromEntities) {
    std::string bomb = "<!DOCTYPE rss [<!ENTITY a0 'ha'>";
    for (int i = 1; i < 30; ++i) {
        const auto before = "&a" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(i) + " '" + before + before + "'>";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf(bomb + "]><rss><channel>&a29;</channel></rss>"), noFeed);
    std::string parameters = "<!DOCTYPE rss [<!ENTITY % p0 '<!-- -->'>";
    for (int i = 1; i < 30; ++i) {
        const auto before = "%p" + std::to_string(i - 1) + ";";
        parameters += "<!ENTITY % p" + std::to_string(i) + " '" + before + before + "'>";
    }
    EXPECT_NE(failureOf(parameters + "%p29;]><rss><channel/></rss>"), "");
    EXPECT_EQ(failureOf("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'><rss><channel/></rss>"), noFeed);
    EXPECT_EQ(failureOf("<rss><channel>&unknown;</channel></rss>"), "it is damaged in line 1");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(AppcastTest, DepthAndNumbersAreBorne) {
    std::string deep = "<rss><channel>";
    std::string many = deep;
    for (int i = 0; i < 100'000; ++i) {
        deep += "<a>";
        many += "<item/>";
    }
    EXPECT_EQ(failureOf(deep), noFeed);
    EXPECT_EQ(read(many + "</channel></rss>").items.size(), 100'000);
}

} // namespace
} // namespace quillon
