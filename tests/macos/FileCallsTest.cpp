#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FileDescriptor.h"
#include "Platform/Posix/files/FolderCalls.h"
#include "Platform/Posix/files/OpenFolder.h"

#include "fakes/FakeFileCalls.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using fakes::fakeFileCalls;

class FileCallsTest : public testing::Test {
  protected:
    FileCallsTest() {
        fakeFileCalls().reset();
        std::string name = fs::temp_directory_path() / "quillon-XXXXXX";
        path = ::mkdtemp(name.data());
        folder = openedFolder(path);
    }
    ~FileCallsTest() override { fs::remove_all(path); }

    void write(const char* name, const char* text) const { std::ofstream(path / name) << text; }
    [[nodiscard]] std::string read(const char* name) const {
        std::stringstream text;
        text << std::ifstream(path / name).rdbuf();
        return text.str();
    }
    [[nodiscard]] FileDescriptor opened(const char* name) const {
        return FileDescriptor(::openat(folder.get(), name, O_RDWR | O_CLOEXEC));
    }

    fs::path path;
    FileDescriptor folder;
};

TEST_F(FileCallsTest, ARenameThatMustNotReplaceIsOneStepOfTheSystem) {
    write("a", "1");
    write("b", "2");
    EXPECT_FALSE(renameWithoutReplacing(folder.get(), "a", "b"));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(fakeFileCalls().lastRenameFlags, 4U);
    EXPECT_EQ(read("b"), "2");
    EXPECT_TRUE(renameWithoutReplacing(folder.get(), "a", "c"));
    EXPECT_EQ(read("c"), "1");
    EXPECT_FALSE(renameWithoutReplacing(folder.get(), "a", "d"));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(FileCallsTest, WhereTheFileSystemHasNoSuchStepItIsLookedFirst) {
    fakeFileCalls().renameError = ENOTSUP;
    write("a", "1");
    write("b", "2");
    EXPECT_EQ(renameInOneStep(folder.get(), "a", "c"), std::nullopt);
    EXPECT_FALSE(renameWithoutReplacing(folder.get(), "a", "b"));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(read("b"), "2");
    EXPECT_TRUE(renameWithoutReplacing(folder.get(), "a", "c"));
    EXPECT_EQ(read("c"), "1");
}

TEST_F(FileCallsTest, AnotherFailureOfARenameIsOne) {
    fakeFileCalls().renameError = EACCES;
    write("a", "1");
    EXPECT_FALSE(renameWithoutReplacing(folder.get(), "a", "c"));
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(read("a"), "1");
}

TEST_F(FileCallsTest, AFileIsLockedOnce) {
    write("a", "1");
    {
        const FileDescriptor first = opened("a");
        const FileDescriptor second = opened("a");
        EXPECT_TRUE(lockFile(first.get()));
        EXPECT_FALSE(lockFile(second.get()));
        EXPECT_EQ(errno, EAGAIN);
    }
    EXPECT_TRUE(lockFile(opened("a").get())) << "until it is closed";
}

TEST_F(FileCallsTest, AFileIsSynchronisedAlsoWhereOnlyThePlainCallIsKnown) {
    write("a", "1");
    EXPECT_TRUE(syncFile(opened("a").get()));
    EXPECT_FALSE(syncFile(-1));
    EXPECT_EQ(errno, EBADF);
}

TEST_F(FileCallsTest, AFolderIsToldByItself) {
    fs::create_directory(path / "a");
    fs::create_directory(path / "b");
    FolderIdentity a;
    FolderIdentity again;
    FolderIdentity b;
    EXPECT_EQ(identifyFolder(openedFolder(folder.get(), "a").get(), a), 0);
    EXPECT_EQ(identifyFolder(openedFolder(folder.get(), "b").get(), b), 0);
    fs::rename(path / "a", path / "c");
    EXPECT_EQ(identifyFolder(openedFolder(folder.get(), "c").get(), again), 0);
    EXPECT_EQ(a, again);
    EXPECT_NE(a, b);
    EXPECT_EQ(identifyFolder(-1, a), EBADF);
}

TEST_F(FileCallsTest, AFolderInWhichSomethingIsMountedIsBusy) {
    FolderIdentity identity;
    EXPECT_EQ(identifyFolder(openedFolder("/proc").get(), identity), EBUSY);
}

TEST_F(FileCallsTest, AnEntryThatMayNotBeUnlinkedIsAFolderOrProtected) {
    write("file", "");
    fs::create_directory(path / "folder");
    fs::create_directory_symlink("folder", path / "link");
    EXPECT_TRUE(isFolderInTheWay(folder.get(), "folder", EPERM));
    EXPECT_FALSE(isFolderInTheWay(folder.get(), "folder", EACCES));
    EXPECT_FALSE(isFolderInTheWay(folder.get(), "file", EPERM));
    EXPECT_FALSE(isFolderInTheWay(folder.get(), "link", EPERM));
    EXPECT_FALSE(isFolderInTheWay(folder.get(), "missing", EPERM));
}

TEST_F(FileCallsTest, ATreeIsRemovedAndNotWhatItsLinksLeadTo) {
    write("mine", "1");
    fs::create_directories(path / "tool" / "a" / "b");
    write("tool/a/b/file", "2");
    fs::create_symlink(path / "mine", path / "tool" / "link");
    fs::create_directory_symlink(path, path / "tool" / "a" / "up");
    OpenFolder open(openedFolder(path), path);
    const auto failure = open.remove("tool");
    EXPECT_FALSE(failure) << failure->description;
    EXPECT_FALSE(fs::exists(path / "tool"));
    EXPECT_EQ(read("mine"), "1");
}

TEST_F(FileCallsTest, AFileIsReplacedAndWhatAnAbandonedWriterLeftGoes) {
    write("file", "old");
    write("file.tmp-abcdef", "abandoned");
    OpenFolder open(openedFolder(path), path);
    const auto failure = open.write("file", "new");
    EXPECT_FALSE(failure) << failure->description;
    EXPECT_EQ(read("file"), "new");
    EXPECT_FALSE(fs::exists(path / "file.tmp-abcdef"));
}

TEST_F(FileCallsTest, FailuresAreSaidInWords) {
    const std::string text = systemError("cannot open x", ENOENT);
    EXPECT_TRUE(text.starts_with("cannot open x: ")) << text;
    EXPECT_GT(text.size(), std::string("cannot open x: ").size());
}

} // namespace
} // namespace quillon
