#include "FolderBench.h"

#include "../session/OrdinaryUser.h"
#include "../session/SystemCalls.h"

#include <atomic>
#include <thread>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class TreeRemovalTest : public FolderBench {
  protected:
    ~TreeRemovalTest() override { setSystemCallHook(nullptr); }
};

TEST_F(TreeRemovalTest, RemovesEverythingInATreeAndNothingElse) {
    writeFile(path / "tool" / "package.bin", "x");
    writeFile(path / "tool" / "a" / "b" / "c", "x");
    fs::create_directories(path / "tool" / "empty" / "empty");
    ASSERT_EQ(::mkfifo((path / "tool" / "pipe").c_str(), 0600), 0);
    writeFile(path / "tool-2", "mine");
    EXPECT_EQ(textOf(folder->remove("tool")), "");
    EXPECT_EQ(textOf(folder->remove("tool")), "") << "what is not there is no error";
    EXPECT_EQ(namesIn(path), Names{"tool-2"});
    EXPECT_EQ(textOf(folder->remove("tool-2")), "") << "a file";
    EXPECT_EQ(namesIn(path), Names{});
}

TEST_F(TreeRemovalTest, LinksGoAndWhatTheyLeadToStays) {
    fs::create_symlink(outside / "folder", path / "top");
    EXPECT_EQ(textOf(folder->remove("top")), "");
    fs::create_directories(path / "tool" / "deeper");
    fs::create_symlink(outside, path / "tool" / "folder");
    fs::create_symlink(outside / "kept", path / "tool" / "deeper" / "file");
    fs::create_symlink("..", path / "tool" / "deeper" / "up");
    fs::create_symlink("/", path / "tool" / "root");
    EXPECT_EQ(textOf(folder->remove("tool")), "");
    EXPECT_EQ(namesIn(path), Names{});
}

/// Deeper than a path can be long, and than a process can have files open.
TEST_F(TreeRemovalTest, DepthHasNoLimit) {
    constexpr int depth = 2000;
    const std::string name(100, 'd');
    int at = ::open(path.c_str(), O_PATH);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0700), 0);
        const int next = ::openat(at, name.c_str(), O_PATH);
        ::close(at);
        at = next;
    }
    ::close(at);
    EXPECT_EQ(textOf(folder->remove(name)), "");
    EXPECT_EQ(namesIn(path), Names{});
}

TEST_F(TreeRemovalTest, StopsAtAnErrorAndNamesTheEntry) {
    writeFile(path / "tool" / "a" / "file", "x");
    setSystemCallHook([](const SystemCall& call) { return call.name == "unlink" ? EROFS : 0; });
    EXPECT_EQ(textOf(folder->remove("tool")),
              "cannot remove " + (path / "tool").string() + ": Read-only file system");
    EXPECT_EQ(readFile(path / "tool" / "a" / "file"), "x");

    // The folders are entered, then it fails.
    static int calls;
    calls = 0;
    setSystemCallHook(
        [](const SystemCall& call) { return call.name == "unlink" && ++calls > 2 ? EPERM : 0; });
    EXPECT_EQ(textOf(folder->remove("tool")), "cannot remove " +
                                                  (path / "tool" / "a" / "file").string() +
                                                  ": Operation not permitted");
    EXPECT_EQ(calls, 3);
}

TEST_F(TreeRemovalTest, FolderThatIsFilledForeverIsGivenUp) {
    fs::create_directories(path / "tool" / "a");
    setSystemCallHook([](const SystemCall& call) {
        static std::atomic<int> calls = 0;
        return call.name == "unlink" && ++calls % 2 == 0 ? ENOTEMPTY : 0;
    });
    const auto text = textOf(folder->remove("tool"));
    EXPECT_NE(text.find("Directory not empty"), std::string::npos) << text;
}

/// Between the look at an entry and the way into it.
TEST_F(TreeRemovalTest, LinkThatTakesAFoldersPlaceIsNotEntered) {
    fs::create_directories(path / "tool" / "inner");
    static fs::path inner;
    static fs::path target;
    static int calls;
    inner = path / "tool" / "inner";
    target = outside;
    calls = 0;
    setSystemCallHook([](const SystemCall& call) {
        if (call.name != "unlink" || ++calls != 2) {
            return 0;
        }
        fs::rename(inner, inner.parent_path().parent_path() / "moved");
        fs::create_directory_symlink(target, inner);
        return EISDIR;
    });
    EXPECT_EQ(textOf(folder->remove("tool")), "");
    EXPECT_EQ(stateOf(outside), outsideBefore);
    EXPECT_EQ(namesIn(path), Names{"moved"});
}

/// A link takes the place of a folder, again and again, while the tree is removed.
TEST_F(TreeRemovalTest, LinksThatAreSwappedInMeanwhileLeadNowhere) {
    std::atomic<bool> ends = false;
    std::atomic<long> swaps = 0;
    std::thread planter([&] {
        const auto aside = temporary.path() / "aside";
        const auto inner = path / "tool" / "inner";
        while (!ends) {
            std::error_code ignored;
            fs::create_directories(aside / "inner", ignored);
            fs::create_symlink(outside, aside / "inner" / "link", ignored);
            fs::create_symlink(outside, aside / "planted", ignored);
            fs::create_directory(path / "tool", ignored);
            fs::remove(inner, ignored); // the link of the last time
            fs::rename(aside / "inner", inner, ignored);
            if (::renameat2(AT_FDCWD, inner.c_str(), AT_FDCWD, (aside / "planted").c_str(),
                            RENAME_EXCHANGE) == 0) {
                ++swaps;
            }
            fs::remove_all(aside, ignored);
        }
    });
    for (int i = 0; i < 2000 || (swaps < 100 && i < 1000000); ++i) {
        [[maybe_unused]] const auto mayFail = folder->remove("tool");
    }
    ends = true;
    planter.join();
    EXPECT_GE(swaps, 100);
    EXPECT_EQ(stateOf(outside), outsideBefore);
    EXPECT_EQ(textOf(folder->remove("tool")), "");
}

/// The fixture's folder belongs to the user whose rights are left.
class TreeRemovalPermissionTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!user.held()) {
            GTEST_SKIP() << "the system does not let an administrator's rights go";
        }
        folder = std::get<std::unique_ptr<Folder>>(files.makeFolder(path));
    }

    OrdinaryUser user;
    TemporaryFolder temporary;
    fs::path path = temporary.path() / "app";
    LinuxFileManager files;
    std::unique_ptr<Folder> folder;
};

TEST_F(TreeRemovalPermissionTest, FoldersThatTheirUserHasShutAreOpened) {
    for (const mode_t mode : {0000, 0100, 0200, 0300, 0400, 0500, 0600}) {
        writeFile(path / "tool" / "shut" / "inside" / "file", "x");
        fs::create_directory(path / "tool" / "empty");
        for (const auto& shut : {path / "tool" / "shut" / "inside", path / "tool" / "shut",
                                 path / "tool" / "empty", path / "tool"}) {
            ASSERT_EQ(::chmod(shut.c_str(), mode), 0);
        }
        const auto error = folder->remove("tool");
        EXPECT_FALSE(error) << mode << ": " << error->description;
        EXPECT_EQ(namesIn(path), Names{});
    }
}

TEST_F(TreeRemovalPermissionTest, ReadOnlySupportFolderIsAnErrorAndStaysReadOnly) {
    writeFile(path / "tool" / "package.bin", "x");
    ASSERT_EQ(::chmod(path.c_str(), 0500), 0);
    const auto error = folder->remove("tool");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description,
              "cannot remove " + (path / "tool").string() + ": Permission denied");
    const auto written = folder->write("file", "x");
    ASSERT_TRUE(written);
    EXPECT_EQ(written->description,
              "cannot make a file in " + path.string() + ": Permission denied");
    EXPECT_EQ(readFile(path / "tool" / "package.bin"), "x");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0500));
    ASSERT_EQ(::chmod(path.c_str(), 0700), 0);
}

TEST_F(TreeRemovalPermissionTest, FolderThatMayNotBeReadCanBeWritten) {
    ASSERT_EQ(::chmod(path.c_str(), 0300), 0);
    EXPECT_FALSE(folder->write("file", "x"));
    EXPECT_TRUE(folder->exists("file"));
    EXPECT_FALSE(folder->remove("file"));
    ASSERT_EQ(::chmod(path.c_str(), 0700), 0);
}

} // namespace
} // namespace quillon
