#include "Platform/Linux/applications/ApplicationNames.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Words = std::vector<std::string>;

struct ApplicationNamesTest : testing::Test {
    ApplicationNames names{{"de_AT", "de"}};

    void add(std::string_view id, const std::string& keys) {
        const auto entry = DesktopEntry::parse("[Desktop Entry]\nType=Application\n" + keys);
        ASSERT_TRUE(entry);
        names.add(id, *entry);
    }

    [[nodiscard]] std::optional<std::string> byClass(std::string_view instance,
                                                     std::string_view name = "") const {
        return names.find("", instance, name);
    }
};

TEST_F(ApplicationNamesTest, UnknownOnesHaveNone) {
    EXPECT_EQ(byClass("x", "X"), std::nullopt);
    EXPECT_EQ(byClass(""), std::nullopt);
    add("", "Name=No id\n");
    EXPECT_EQ(byClass(""), std::nullopt);
}

TEST_F(ApplicationNamesTest, ByTheIdThatTheApplicationSays) {
    add("org.example.Editor", "Name=Editor\nStartupWMClass=other\n");
    add("editor", "Name=Another\n");
    EXPECT_EQ(names.find("org.example.Editor", "editor", "Editor"), "Editor");
    EXPECT_EQ(names.find("org.example.Unknown", "editor", "Editor"), "Another");
}

TEST_F(ApplicationNamesTest, ByDeclaredClassBeforeFileNameBeforeProgram) {
    add("some-program", "Name=By program\nExec=/usr/bin/thing\n");
    EXPECT_EQ(byClass("thing", "Thing"), "By program");
    add("thing", "Name=By file name\nExec=else\n");
    EXPECT_EQ(byClass("thing", "Thing"), "By file name");
    add("else", "Name=By class\nStartupWMClass=Thing\n");
    EXPECT_EQ(byClass("thing", "Thing"), "By class");
}

TEST_F(ApplicationNamesTest, TheInstanceComesFirst) {
    add("browser", "Name=Browser\nStartupWMClass=Browser\n");
    add("site", "Name=Site\nStartupWMClass=crx_site\n");
    EXPECT_EQ(byClass("crx_site", "Browser"), "Site");
    EXPECT_EQ(byClass("browser", "Browser"), "Browser");
    EXPECT_EQ(byClass("other", "Browser"), "Browser");
}

TEST_F(ApplicationNamesTest, LetterCaseAndBlanksDoNotCount) {
    add("two-words", "Name=Two Words\n");
    EXPECT_EQ(byClass("", "Two Words"), "Two Words");
    EXPECT_EQ(byClass("TWO-WORDS"), "Two Words");
}

TEST_F(ApplicationNamesTest, TheProgramItselfBeforePartsOfIt) {
    add("a-settings", "Name=Settings\nExec=editor --preferences\n");
    add("b-editor", "Name=Editor\nExec=env LANG=C /opt/editor %U\n");
    EXPECT_EQ(byClass("editor"), "Editor");
}

TEST_F(ApplicationNamesTest, WhatIsListedBeforeWhatIsNot) {
    add("a", "Name=Helper\nExec=editor\nNoDisplay=true\n");
    EXPECT_EQ(byClass("editor"), "Helper");
    add("b", "Name=Editor\nExec=editor\n");
    add("c", "Name=Third\nExec=editor\n");
    EXPECT_EQ(byClass("editor"), "Editor");
}

TEST_F(ApplicationNamesTest, ProgramsInATerminalHaveTheTerminalsWindow) {
    add("vi", "Name=Vi\nExec=term -e vi\nTerminal=true\n");
    EXPECT_EQ(byClass("term"), std::nullopt);
}

TEST_F(ApplicationNamesTest, AnEntryHidesThoseOfTheSameIdAfterIt) {
    add("editor", "Name=Mine\n");
    add("editor", "Name=The system's\nExec=editor\n");
    EXPECT_EQ(byClass("editor"), "Mine");
    add("gone", "Hidden=true\nName=x\n");
    add("gone", "Name=The system's\n");
    EXPECT_EQ(byClass("gone"), std::nullopt);
}

TEST_F(ApplicationNamesTest, OtherEntriesAreNoApplications) {
    add("link", "Type=Link\nName=Page\n");
    EXPECT_EQ(byClass("link"), std::nullopt);
    add("nameless", "Exec=x\n");
    EXPECT_EQ(byClass("nameless"), std::nullopt);
}

TEST_F(ApplicationNamesTest, InTheLanguageOfTheUser) {
    add("a", "Name=Files\nName[de]=Dateien\n");
    EXPECT_EQ(byClass("a"), "Dateien");
    add("b", "Name=Files\nName[de]=Dateien\nName[de_AT]=Ordner\nName[fr]=Fichiers\n");
    EXPECT_EQ(byClass("b"), "Ordner");
    add("c", "Name=Files\nName[de]=\nName[fr]=Fichiers\n");
    EXPECT_EQ(byClass("c"), "Files");
    add("d", "Name=Files\nName[de]=\xFF\n");
    EXPECT_EQ(byClass("d"), "Files");
}

TEST(ApplicationNamesLocales, FromTheMostExact) {
    EXPECT_EQ(localesOf("de_AT.UTF-8@euro"), (Words{"de_AT@euro", "de_AT", "de@euro", "de"}));
    EXPECT_EQ(localesOf("de_AT.UTF-8"), (Words{"de_AT", "de"}));
    EXPECT_EQ(localesOf("sr@latin"), (Words{"sr@latin", "sr"}));
    EXPECT_EQ(localesOf("eo"), (Words{"eo"}));
    EXPECT_EQ(localesOf("C.UTF-8"), Words{});
    EXPECT_EQ(localesOf("POSIX"), Words{});
    EXPECT_EQ(localesOf(""), Words{});
}

} // namespace
} // namespace quillon
