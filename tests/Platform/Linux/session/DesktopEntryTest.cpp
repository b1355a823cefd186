#include "Platform/Linux/session/DesktopEntry.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Words = std::vector<std::string>;

TEST(DesktopEntry, ReadsTheMainGroupOnly) {
    const auto entry = DesktopEntry::parse("# remark\r\n\n[Desktop Entry]\nName = A b \r\nExec=x\n"
                                           "[Other]\nName=wrong\nHidden=true");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->text("Name"), "A b");
    EXPECT_EQ(entry->text("Exec"), "x");
    EXPECT_EQ(entry->text("Hidden"), std::nullopt);
}

TEST(DesktopEntry, UndoesEscapesOfValues) {
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nA=\\sx\\ty\\\\z\nB=\\q\nC=\\\nD=\xFF");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->text("A"), " x\ty\\z");
    EXPECT_EQ(entry->text("B"), std::nullopt);
    EXPECT_EQ(entry->text("C"), std::nullopt);
    EXPECT_EQ(entry->text("D"), std::nullopt) << "not UTF-8";
}

TEST(DesktopEntry, Booleans) {
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nA=true\nB=false\nC=True\nD=1\nE=0");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->boolean("A"), true);
    EXPECT_EQ(entry->boolean("B"), false);
    EXPECT_EQ(entry->boolean("C"), std::nullopt);
    EXPECT_EQ(entry->boolean("D"), true);
    EXPECT_EQ(entry->boolean("E"), false);
    EXPECT_EQ(entry->boolean("F"), std::nullopt);
}

TEST(DesktopEntry, RefusesWhatIsNone) {
    for (const char* text : {"", "Exec=x\n", "[Other]\nExec=x\n", "[Desktop Entry]\nExec\n",
                             "[Desktop Entry]\n=x\n"}) {
        EXPECT_FALSE(DesktopEntry::parse(text)) << text;
    }
}

TEST(DesktopEntry, QuotesAsDesktopEntriesDo) {
    EXPECT_EQ(execValue("/usr/bin/quillon"), R"("/usr/bin/quillon")");
    EXPECT_EQ(execValue("/a b"), R"("/a b")");
    EXPECT_EQ(execValue("/a\"b"), R"("/a\\"b")");
    EXPECT_EQ(execValue("/a$b`c"), R"("/a\\$b\\`c")");
    EXPECT_EQ(execValue("/a\\b"), R"("/a\\\\b")");
    EXPECT_EQ(execValue("/100%u"), R"(env "/100%%u")");
    EXPECT_EQ(execValue("/ärger'"), R"("/ärger'")");
}

TEST(DesktopEntry, NamesNoProgramThatLaunchersCannotStart) {
    EXPECT_FALSE(execObstacle("/a b/ü\"'\\$`%;#"));
    EXPECT_NE(execObstacle("/a\nb")->find("line break"), std::string::npos);
    EXPECT_TRUE(execObstacle("/a\tb"));
    EXPECT_NE(execObstacle("/a=b")->find("equals sign"), std::string::npos);
    EXPECT_NE(execObstacle("/a\xFF")->find("UTF-8"), std::string::npos);
}

TEST(DesktopEntry, TakesCommandLinesApart) {
    EXPECT_EQ(execArguments("quillon"), (Words{"quillon"}));
    EXPECT_EQ(execArguments("  /a/b \t--x  'c d' "), (Words{"/a/b", "--x", "c d"}));
    EXPECT_EQ(execArguments(R"("/a b" "x\"y\\z\$\`\q")"), (Words{"/a b", "x\"y\\z$`\\q"}));
    EXPECT_EQ(execArguments(R"(/a\ b)"), (Words{"/a b"}));
    EXPECT_EQ(execArguments("/a%%b %U %"), (Words{"/a%b"}));
    EXPECT_EQ(execArguments("env A=1 B= /a C=2"), (Words{"/a", "C=2"}));
    EXPECT_EQ(execArguments("env A=1"), Words{});
    EXPECT_EQ(execArguments("\"\""), (Words{""}));
    EXPECT_EQ(execArguments("/a \"open"), Words{});
    EXPECT_EQ(execArguments(""), Words{});
}

} // namespace
} // namespace quillon
