#include "Platform/Linux/session/AutostartLoginItem.h"

#include "OrdinaryUser.h"
#include "support/TemporaryFolder.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr const char* entryName = "com.pelorin.PelorinApp.desktop";

struct AutostartLoginItemTest : testing::Test {
    TemporaryFolder folder;
    fs::path program = folder.path() / "bin/quillon";
    AutostartFolders folders{folder.path() / "config/autostart",
                             {folder.path() / "etc/autostart", folder.path() / "share/autostart"}};
    fs::path file = folders.user / entryName;
    fs::path systemFile = folders.system[1] / entryName;
    AutostartLoginItem item{program, folders};

    AutostartLoginItemTest() { makeProgram(program); }

    /// A program that says where it lies.
    static void makeProgram(const fs::path& path) {
        writeFile(path, "#!/bin/sh\nprintf %s \"$0\"\n");
        fs::permissions(path, fs::perms::owner_all);
    }

    void enter(const fs::path& where, const std::string& keys) const {
        writeFile(where, "[Desktop Entry]\nType=Application\nName=x\n" + keys + "\n");
    }
    [[nodiscard]] std::string exec() const { return "Exec=" + program.string(); }

    /// Where the program lies that another implementation of desktop entries starts for the file.
    static std::string launched(const fs::path& entry) {
        FILE* output = popen(("gio launch " + entry.string()).c_str(), "r");
        std::string said;
        for (int c = fgetc(output); c != EOF; c = fgetc(output)) {
            said += static_cast<char>(c);
        }
        EXPECT_EQ(pclose(output), 0);
        return said;
    }
};

TEST_F(AutostartLoginItemTest, IsOffUntilRegistered) {
    EXPECT_TRUE(item.isSupported());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.registerService(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(namesIn(folders.user), (std::vector<std::string>{entryName}));
    EXPECT_EQ(item.unregisterService(), std::nullopt);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(namesIn(folders.user).empty());
    EXPECT_EQ(item.unregisterService(), std::nullopt) << "nothing left to do";
}

TEST_F(AutostartLoginItemTest, LaunchersStartExactlyTheProgramWhateverItsPath) {
    for (const char* name : {"plain", "a b", "quo\"te", "apos'trophe", "back\\slash", "\\\\n\\s\\",
                             "$HOME", "`id`", "100%u%%f", "%", "~", "äöü→", "a;b&c|d<e>f", "#x",
                             "(x)*?[a]", " lead and trail ", "-x", "!"}) {
        const fs::path odd = folder.path() / name / name;
        makeProgram(odd);
        AutostartLoginItem oddItem{odd, folders};
        ASSERT_EQ(oddItem.registerService(), std::nullopt) << name;
        EXPECT_TRUE(oddItem.isEnabled()) << readFile(file);
        EXPECT_EQ(launched(file), odd.string()) << readFile(file);
        EXPECT_EQ(QProcess::execute("desktop-file-validate", {QString::fromStdString(file)}), 0)
            << readFile(file);
    }
}

TEST_F(AutostartLoginItemTest, RefusesPathsThatNoEntryCanHold) {
    for (const char* name : {"a\nb", "a=b", "a\x01", "a\xFF"}) {
        AutostartLoginItem oddItem{folder.path() / name, folders};
        const auto failure = oddItem.registerService();
        ASSERT_TRUE(failure) << name;
        EXPECT_TRUE(failure->starts_with("Quillon will not start at login: a program")) << *failure;
        EXPECT_FALSE(fs::exists(file));
    }
}

TEST_F(AutostartLoginItemTest, ReadsWhatTheFileSays) {
    const std::string name = program.string();
    const std::vector<std::pair<std::string, bool>> rows{
        {"Exec=" + name, true},
        {"Exec=" + name + " --quiet %U", true},
        {"Exec=\"" + name + "\"\nHidden=false\nX-GNOME-Autostart-enabled=true", true},
        {"Exec=" + name + "\nHidden=true", false},
        {"Exec=" + name + "\nX-GNOME-Autostart-enabled=false", false},
        {"Exec=env LANG=C " + name, true},
        {"Exec=" + name + "x", false},
        {"Exec=\"" + name, false},
        {"Exec=", false},
        {"", false},
        {"Exec=" + name + "\nType=Link", false},
        {"Exec=" + name + "\nnonsense", false},
        {"[Desktop Action x]\nExec=" + name, false},
    };
    for (const auto& [keys, enabled] : rows) {
        enter(file, keys);
        EXPECT_EQ(item.isEnabled(), enabled) << keys;
        EXPECT_EQ(item.registerService(), std::nullopt) << "sets it right";
        EXPECT_TRUE(item.isEnabled()) << keys;
    }
}

TEST_F(AutostartLoginItemTest, FindsTheProgramUnderOtherNames) {
    fs::create_symlink(program, folder.path() / "link");
    enter(file, "Exec=" + (folder.path() / "link").string());
    EXPECT_TRUE(item.isEnabled());
    enter(file, "Exec=quillon");
    EXPECT_FALSE(item.isEnabled());
    const std::string path = std::getenv("PATH");
    setenv("PATH", (path + ":" + program.parent_path().string()).c_str(), 1);
    EXPECT_TRUE(item.isEnabled());
    setenv("PATH", path.c_str(), 1);
}

TEST_F(AutostartLoginItemTest, SystemEntriesCountUnlessTheUserHasOne) {
    enter(systemFile, exec());
    EXPECT_TRUE(item.isEnabled());
    enter(file, exec() + "\nHidden=true");
    EXPECT_FALSE(item.isEnabled());
    fs::remove(file);
    enter(folders.system[0] / entryName, "Exec=/bin/true");
    EXPECT_FALSE(item.isEnabled()) << "the more important folder counts";
}

TEST_F(AutostartLoginItemTest, HidesSystemEntriesWhenSwitchedOff) {
    enter(systemFile, exec());
    EXPECT_EQ(item.unregisterService(), std::nullopt);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_NE(readFile(file).find("Hidden=true\n"), std::string::npos);
    EXPECT_EQ(QProcess::execute("desktop-file-validate", {QString::fromStdString(file)}), 0);
    EXPECT_EQ(item.registerService(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());

    enter(systemFile, exec() + "\nHidden=true");
    EXPECT_EQ(item.unregisterService(), std::nullopt);
    EXPECT_FALSE(fs::exists(file)) << "nothing would take over";
}

TEST_F(AutostartLoginItemTest, DanglingLinksAreReplacedAndNotFollowed) {
    fs::create_directories(folders.user);
    const fs::path target = folder.path() / "elsewhere.desktop";
    fs::create_symlink(target, file);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.registerService(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_FALSE(fs::exists(target));
    fs::remove(file);
    fs::create_symlink(target, file);
    EXPECT_EQ(item.unregisterService(), std::nullopt);
    EXPECT_FALSE(fs::is_symlink(file));
}

TEST_F(AutostartLoginItemTest, WhatALinkLeadsToIsLeftAlone) {
    const fs::path target = folder.path() / "installed.desktop";
    enter(target, exec() + "\nHidden=true");
    const std::string before = readFile(target);
    fs::create_directories(folders.user);
    fs::create_symlink(target, file);
    EXPECT_EQ(item.registerService(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(readFile(target), before);
}

TEST_F(AutostartLoginItemTest, AFolderInPlaceOfTheFileIsSaid) {
    fs::create_directories(file / "something");
    EXPECT_FALSE(item.isEnabled());
    for (const auto& failure : {item.registerService(), item.unregisterService()}) {
        ASSERT_TRUE(failure);
        EXPECT_NE(failure->find(file.string()), std::string::npos) << *failure;
    }
    EXPECT_EQ(namesIn(folders.user), (std::vector<std::string>{entryName})) << "nothing left over";
}

TEST_F(AutostartLoginItemTest, AFileInPlaceOfTheFolderIsSaid) {
    writeFile(folders.user, "");
    EXPECT_FALSE(item.isEnabled());
    EXPECT_NE(item.registerService().value_or("").find(folders.user.string()), std::string::npos);
    EXPECT_EQ(item.unregisterService(), std::nullopt);
}

TEST_F(AutostartLoginItemTest, NeverWaitsForAPipe) {
    fs::create_directories(folders.user);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(AutostartLoginItemTest, SaysWhenTheFolderIsReadOnly) {
    EXPECT_EQ(item.registerService(), std::nullopt);
    fs::permissions(folder.path(), fs::perms::all);
    for (const fs::path& path : {folders.user.parent_path(), folders.user}) {
        fs::permissions(path, fs::perms::owner_read | fs::perms::owner_exec |
                                  fs::perms::others_read | fs::perms::others_exec);
    }
    {
        const OrdinaryUser user;
        ASSERT_TRUE(user.held());
        for (const auto& failure : {item.registerService(), item.unregisterService()}) {
            ASSERT_TRUE(failure);
            EXPECT_NE(failure->find("ermission denied"), std::string::npos) << *failure;
        }
    }
    EXPECT_TRUE(item.isEnabled());
    fs::permissions(folders.user, fs::perms::owner_all);
}

TEST_F(AutostartLoginItemTest, SaysWhenTheFileCannotBeRead) {
    EXPECT_EQ(item.registerService(), std::nullopt);
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(file, fs::perms::none);
    const OrdinaryUser user;
    ASSERT_TRUE(user.held());
    EXPECT_FALSE(item.isEnabled()) << "nor could the session";
}

TEST(AutostartFolders, AreThoseOfTheSession) {
    setenv("XDG_CONFIG_HOME", "/c", 1);
    setenv("XDG_CONFIG_DIRS", "/x:relative::/y", 1);
    const auto named = AutostartFolders::ofSession();
    EXPECT_EQ(named.user, "/c/autostart");
    EXPECT_EQ(named.system, (std::vector<fs::path>{"/x/autostart", "/y/autostart"}));
    unsetenv("XDG_CONFIG_DIRS");
    EXPECT_EQ(AutostartFolders::ofSession().system, (std::vector<fs::path>{"/etc/xdg/autostart"}));
    unsetenv("XDG_CONFIG_HOME");
}

} // namespace
} // namespace quillon
