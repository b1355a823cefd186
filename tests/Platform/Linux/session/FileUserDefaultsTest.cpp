#include "Platform/Linux/session/FileUserDefaults.h"

#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include "RecordingDiagnostics.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <sys/stat.h>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;
using Names = std::vector<std::string>;

std::optional<DefaultsObject> number(double value) { return DefaultsObject(value); }

mode_t modeOf(const std::filesystem::path& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777U : 0;
}

ino_t inodeOf(const std::filesystem::path& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

class FileUserDefaultsTest : public testing::Test {
  protected:
    FileUserDefaults open() { return {file, runLoop, diagnostics}; }

    /// Long enough for a change to be written.
    void settle() { runLoop.advance(0.1); }

    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "config" / "com.pelorin.PelorinApp";
    std::filesystem::path file = folder / "defaults.json";
    VirtualRunLoop runLoop;
    RecordingDiagnostics diagnostics;
};

TEST_F(FileUserDefaultsTest, MissingFileIsEmptyAndNothingIsSaidOrMade) {
    {
        auto defaults = open();
        EXPECT_EQ(defaults.object("x"), std::nullopt);
        defaults.remove("x");
        settle();
        EXPECT_TRUE(defaults.flush());
    }
    EXPECT_EQ(diagnostics.take(), Lines{});
    EXPECT_FALSE(std::filesystem::exists(temporary.path() / "config"));
}

TEST_F(FileUserDefaultsTest, ReadsTheFileOnce) {
    writeFile(file, R"({"x": 1, "b": false})");
    auto defaults = open();
    writeFile(file, R"({"x": 2})");
    settle();
    EXPECT_EQ(defaults.object("x"), number(1));
    EXPECT_EQ(defaults.object("b"), std::optional(DefaultsObject(false)));
    EXPECT_EQ(defaults.object("absent"), std::nullopt);
}

TEST_F(FileUserDefaultsTest, ChangeIsSeenAtOnceAndWrittenSoon) {
    auto defaults = open();
    defaults.set("x", 40.0);
    EXPECT_EQ(defaults.object("x"), number(40));
    EXPECT_EQ(readFile(file), "");
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"x\": 40.0\n}\n");
    defaults.remove("x");
    EXPECT_EQ(defaults.object("x"), std::nullopt);
    settle();
    EXPECT_EQ(readFile(file), "{}\n");
    EXPECT_EQ(diagnostics.take(), Lines{});
    EXPECT_EQ(runLoop.timerCount(), 0U);
}

TEST_F(FileUserDefaultsTest, NewFileAndFoldersAreTheUsersAlone) {
    auto defaults = open();
    defaults.set("x", 1.0);
    settle();
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder.parent_path()), 0700U);
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json", "defaults.json.lock"}));
}

TEST_F(FileUserDefaultsTest, ModeAndOwnerOfAnExistingFileStay) {
    writeFile(file, R"({"x": 1})");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    const bool mayGiveAway = ::geteuid() == 0;
    if (mayGiveAway) {
        ASSERT_EQ(::chown(file.c_str(), 12345, 12345), 0);
    }
    auto defaults = open();
    defaults.set("x", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"x\": 2.0\n}\n");
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, 0640U);
    EXPECT_EQ(info.st_uid, mayGiveAway ? 12345 : ::geteuid());
}

TEST_F(FileUserDefaultsTest, OtherProgramsKeysStay) {
    writeFile(file, R"({"mine": 1, "theirs": 1, "both": 1})");
    auto defaults = open();
    defaults.set("mine", 2.0);
    defaults.remove("both");
    writeFile(file, R"({"mine": 1, "theirs": 5, "both": 7, "new": {"a": null}})");
    settle();
    EXPECT_EQ(readFile(file),
              "{\n  \"mine\": 2.0,\n  \"new\": {\"a\": null},\n  \"theirs\": 5\n}\n");
    // What has been written once is not written again over a later change of somebody else.
    writeFile(file, R"({"mine": 9})");
    defaults.set("other", true);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"mine\": 9,\n  \"other\": true\n}\n");
}

TEST_F(FileUserDefaultsTest, ValueThatIsTheSameHereIsStillWrittenOverAnothers) {
    writeFile(file, R"({"x": 1})");
    auto defaults = open();
    writeFile(file, R"({"x": 2})");
    defaults.set("x", 1.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"x\": 1.0\n}\n");
}

TEST_F(FileUserDefaultsTest, SameContentIsNotWritten) {
    writeFile(file, R"({"x": 40})");
    const auto inode = inodeOf(file);
    auto defaults = open();
    defaults.set("x", 40.0);
    defaults.remove("absent");
    settle();
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(inodeOf(file), inode);
    EXPECT_EQ(readFile(file), R"({"x": 40})");
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json"}));
}

TEST_F(FileUserDefaultsTest, DragOfASliderGivesFewWrites) {
    auto defaults = open();
    int writes = 0;
    ino_t inode = 0;
    for (int step = 1; step <= 100; ++step) { // a change every 10 ms
        defaults.set("x", step * 1.0);
        runLoop.advance(0.01);
        if (const auto now = inodeOf(file); now != inode) {
            inode = now;
            ++writes;
        }
    }
    settle();
    EXPECT_GE(writes, 10);
    EXPECT_LE(writes, 20);
    EXPECT_EQ(readFile(file), "{\n  \"x\": 100.0\n}\n");
}

TEST_F(FileUserDefaultsTest, RefusedValueKeepsTheOldOne) {
    auto defaults = open();
    defaults.set("x", 1.0);
    defaults.set("x", std::nan(""));
    defaults.set("x", std::string("\xff"));
    EXPECT_EQ(defaults.object("x"), number(1));
    const Lines lines = diagnostics.take();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "⚠️ Setting x is not changed: only true, false, finite numbers, UTF-8 "
                        "texts and lists of texts can be stored");
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"x\": 1.0\n}\n");
}

TEST_F(FileUserDefaultsTest, LinkedFileIsWrittenWhereItIs) {
    const auto repository = temporary.path() / "dotfiles";
    writeFile(repository / "quillon.json", R"({"x": 1})");
    std::filesystem::create_directories(folder);
    std::filesystem::create_symlink("../../dotfiles/link.json", file);
    std::filesystem::create_symlink("quillon.json", repository / "link.json");
    auto defaults = open();
    EXPECT_EQ(defaults.object("x"), number(1));
    defaults.set("x", 2.0);
    settle();
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_TRUE(std::filesystem::is_symlink(repository / "link.json"));
    EXPECT_EQ(readFile(repository / "quillon.json"), "{\n  \"x\": 2.0\n}\n");
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json"}));
}

TEST_F(FileUserDefaultsTest, LinkToAMissingFileMakesTheFileButNoFolder) {
    std::filesystem::create_directories(folder);
    const auto repository = temporary.path() / "dotfiles";
    std::filesystem::create_symlink(repository / "quillon.json", file);
    auto defaults = open();
    defaults.set("x", 2.0);
    EXPECT_FALSE(defaults.flush());
    EXPECT_FALSE(std::filesystem::exists(repository));
    EXPECT_EQ(diagnostics.take().size(), 1U);
    std::filesystem::create_directories(repository);
    EXPECT_TRUE(defaults.flush());
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readFile(repository / "quillon.json"), "{\n  \"x\": 2.0\n}\n");
}

TEST_F(FileUserDefaultsTest, FlushNeedsNoRunningLoop) {
    auto defaults = open();
    EXPECT_TRUE(defaults.flush());
    defaults.set("x", true);
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(readFile(file), "{\n  \"x\": true\n}\n");
    // The write that had been scheduled finds nothing left to do.
    const auto inode = inodeOf(file);
    settle();
    EXPECT_EQ(inodeOf(file), inode);
}

TEST_F(FileUserDefaultsTest, QueuedWriteOutlivesTheStore) {
    {
        auto defaults = open();
        defaults.set("x", 1.0);
    }
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"x\": 1.0\n}\n");
}

TEST_F(FileUserDefaultsTest, WriteThatNeverRunsIsReleasedWithTheLoop) {
    auto loop = std::make_unique<VirtualRunLoop>();
    {
        FileUserDefaults defaults(file, *loop, diagnostics);
        defaults.set("x", 1.0);
    }
    loop.reset();
    EXPECT_FALSE(std::filesystem::exists(file));
}

class FileUserDefaultsStoresTest : public FileUserDefaultsTest {
  protected:
    FileUserDefaultsStores stores{temporary.path(), "com.pelorin.PelorinApp", runLoop, diagnostics};
};

TEST_F(FileUserDefaultsStoresTest, EachStoreHasItsFile) {
    stores.standard().set("x", 1.0);
    auto* suite = stores.suite("com.pelorin.shared");
    ASSERT_NE(suite, nullptr);
    suite->set("x", 2.0);
    EXPECT_EQ(stores.suite("com.pelorin.shared"), suite);
    EXPECT_EQ(stores.standard().object("x"), number(1));
    EXPECT_TRUE(stores.flush());
    EXPECT_EQ(readFile(temporary.path() / "com.pelorin.PelorinApp" / "defaults.json"),
              "{\n  \"x\": 1.0\n}\n");
    EXPECT_EQ(readFile(temporary.path() / "com.pelorin.shared" / "defaults.json"),
              "{\n  \"x\": 2.0\n}\n");
}

TEST_F(FileUserDefaultsStoresTest, SuiteOfTheStandardNameIsTheStandardStore) {
    EXPECT_EQ(stores.suite("com.pelorin.PelorinApp"), &stores.standard());
}

TEST_F(FileUserDefaultsStoresTest, NameThatIsNoFolderCannotBeOpened) {
    for (const std::string_view name :
         {std::string_view(""), std::string_view("."), std::string_view(".."),
          std::string_view("a/b"), std::string_view("/etc"), std::string_view("a\0b", 3)}) {
        EXPECT_EQ(stores.suite(name), nullptr) << name;
    }
    EXPECT_EQ(stores.suite(std::string(NAME_MAX + 1, 'x')), nullptr);
    EXPECT_NE(stores.suite(std::string(NAME_MAX, 'x')), nullptr);
    EXPECT_NE(stores.suite("..."), nullptr);
    EXPECT_EQ(diagnostics.take(), Lines{});
}

TEST_F(FileUserDefaultsStoresTest, FlushSaysWhenOneStoreFails) {
    writeFile(temporary.path() / "blocked", "a file where the folder should be");
    stores.standard().set("x", 1.0);
    stores.suite("blocked")->set("x", 2.0);
    EXPECT_FALSE(stores.flush());
    EXPECT_EQ(readFile(temporary.path() / "com.pelorin.PelorinApp" / "defaults.json"),
              "{\n  \"x\": 1.0\n}\n");
}

class ConfigHomeTest : public testing::Test {
  protected:
    ConfigHomeTest() : config_(get("XDG_CONFIG_HOME")), home_(get("HOME")) {}
    ~ConfigHomeTest() override {
        put("XDG_CONFIG_HOME", config_);
        put("HOME", home_);
    }

    static std::optional<std::string> get(const char* name) {
        const char* value = std::getenv(name);
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    }
    static void put(const char* name, const std::optional<std::string>& value) {
        value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    }

  private:
    std::optional<std::string> config_;
    std::optional<std::string> home_;
};

TEST_F(ConfigHomeTest, IsTheAbsolutePathOfTheEnvironment) {
    put("XDG_CONFIG_HOME", "/somewhere/config");
    EXPECT_EQ(configHome(), "/somewhere/config");
}

TEST_F(ConfigHomeTest, RelativePathsAreIgnored) {
    put("HOME", "/home/somebody");
    for (const auto& value : {std::optional<std::string>(), std::optional<std::string>(""),
                              std::optional<std::string>("config")}) {
        put("XDG_CONFIG_HOME", value);
        EXPECT_EQ(configHome(), "/home/somebody/.config");
    }
    put("HOME", "somebody");
    EXPECT_TRUE(configHome().is_absolute());
    EXPECT_EQ(configHome().filename(), ".config");
}

} // namespace
} // namespace quillon
