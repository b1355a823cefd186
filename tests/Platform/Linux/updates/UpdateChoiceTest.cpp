#include "Platform/Linux/updates/UpdateChoice.h"

#include "Platform/Linux/updates/Feeds.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

std::optional<PublishedVersion> choose(const std::string& items) {
    const auto parsed = parseAppcast(feedOf(items));
    if (!std::holds_alternative<Appcast>(parsed)) {
        ADD_FAILURE() << "not read: " << items;
        return std::nullopt;
    }
    return newestVersion(std::get<Appcast>(parsed));
}

std::string chosen(const std::string& items) {
    const auto choice = choose(items);
    return choice ? choice->version : "none";
}

std::string page(const std::string& links) {
    const auto choice = choose(itemOf("2", links));
    return choice ? choice->page : "none";
}

TEST(UpdateChoiceTest, TheNewestWhereverItStands) {
    EXPECT_EQ(chosen(itemOf("1.9") + itemOf("1.10") + itemOf("1.2")), "1.10");
    EXPECT_EQ(chosen(itemOf("2.0") + itemOf("2.0-rc.1")), "2.0");
    EXPECT_EQ(chosen(""), "none");
}

TEST(UpdateChoiceTest, OtherSystemsAndChannelsDoNotCount) {
    EXPECT_EQ(chosen(itemOf("3", "", "v:os='macos'") + itemOf("2", "", "v:os='Linux'")), "2");
    EXPECT_EQ(chosen(itemOf("3", "", "os='windows'") + itemOf("1")), "1");
    EXPECT_EQ(chosen(itemOf("3", "<v:channel>beta</v:channel>") + itemOf("2")), "2");
    EXPECT_EQ(chosen(itemOf("3", "", "v:os='macos'")), "none");
    EXPECT_EQ(chosen("<item><v:version>3</v:version><enclosure v:os='macos'/></item>"), "none");
}

TEST(UpdateChoiceTest, OneOfSeveralEnclosuresMayBeForUs) {
    EXPECT_EQ(chosen("<item><enclosure v:version='3' v:os='macos'/>"
                     "<enclosure v:version='2' v:os='linux'/></item>"),
              "2");
}

TEST(UpdateChoiceTest, WhatIsNoVersionDoesNotCount) {
    EXPECT_EQ(chosen(itemOf("newest") + itemOf("") + "<item/>" + itemOf("1")), "1");
}

TEST(UpdateChoiceTest, ComparesWhatPeopleRead) {
    EXPECT_EQ(chosen(itemOf("900", "", "v:shortVersionString='1.0'") +
                     itemOf("800", "", "v:shortVersionString='2.0'")),
              "2.0");
    EXPECT_EQ(chosen("<item><v:version>7</v:version>"
                     "<v:shortVersionString>0.3</v:shortVersionString></item>"),
              "0.3");
    // A name is not comparable.
    EXPECT_EQ(chosen(itemOf("0.4", "", "v:shortVersionString='Spring'")), "0.4");
}

TEST(UpdateChoiceTest, OfTheSameVersionTheLaterBuild) {
    const auto build = [](const char* number) {
        return itemOf(number, std::string("<link>https://example.org/") + number + "</link>",
                      "v:shortVersionString='2.0'");
    };
    EXPECT_EQ(choose(build("9") + build("10") + build("8"))->page, "https://example.org/10");
}

TEST(UpdateChoiceTest, TheFirstPageThatABrowserMayOpen) {
    EXPECT_EQ(page("<link>https://example.org/2</link>"
                   "<v:releaseNotesLink>https://example.org/n</v:releaseNotesLink>"),
              "https://example.org/2");
    EXPECT_EQ(page("<v:releaseNotesLink>http://example.org/n</v:releaseNotesLink>"),
              "http://example.org/n");
    EXPECT_EQ(page(""), "https://example.org/all");
    for (const char* bad :
         {"file:///etc/passwd", "javascript:alert(1)", "/relative", "https://", "--help", "https:x",
          "data:text/html,x", "ssh://example.org", "HTTPS ://example.org", "http://[oops"}) {
        EXPECT_EQ(page(std::string("<link>") + bad + "</link>"), "https://example.org/all") << bad;
    }
    EXPECT_EQ(page("<link>https://example.org/" + std::string(3000, 'x') + "</link>"),
              "https://example.org/all");
    EXPECT_EQ(page("<link>HTTPS://example.org/a b?ä</link>"), "https://example.org/a%20b?%C3%A4");
    EXPECT_EQ(newestVersion(Appcast{"", {AppcastItem{{}, "2", "", "ftp://x", "", false}}})->page,
              "");
}

TEST(UpdateChoiceTest, TextsBecomePlain) {
    EXPECT_EQ(plainText("0.2.0", 40), "0.2.0");
    EXPECT_EQ(plainText(" a\n\tb\r\n  c\x01\x7f ", 40), "a b c");
    EXPECT_EQ(plainText("<b>2</b>", 40), "<b>2</b>"); // shown as it is
    EXPECT_EQ(plainText("1\u202e2\u200b3\u2066\ufeff", 40), "123");
    EXPECT_EQ(plainText("1\u20282", 40), "1 2");
    EXPECT_EQ(plainText("a\xff", 40), "a\ufffd");
    EXPECT_EQ(plainText(std::string_view("a\0b", 3), 40), "a b");
    EXPECT_EQ(plainText("12345", 5), "12345");
    EXPECT_EQ(plainText("123456", 5), "1234…");
    EXPECT_EQ(plainText("😀😀😀", 2), "😀…");
    EXPECT_EQ(plainText("", 5), "");
}

} // namespace
} // namespace quillon
