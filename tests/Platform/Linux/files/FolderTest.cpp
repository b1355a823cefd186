#include "FolderBench.h"

#include "Platform/Posix/files/AtomicFile.h"
#include "Platform/Posix/files/FolderCalls.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Names = std::vector<std::string>;

class FolderTest : public FolderBench {};

const std::vector<std::string> noNames{
    "", ".", "..", "a/b", "/a", "a/", "../up", "a\0b"s, std::string(256, 'x')};

TEST_F(FolderTest, WhatIsNoNameIsRefusedByEverything) {
    writeFile(path / "mine", "mine");
    for (const auto& name : noNames) {
        SCOPED_TRACE(name);
        EXPECT_EQ(std::get<FileError>(folder->makeFolder(name)).description,
                  "this cannot be the name of a folder");
        EXPECT_FALSE(folder->exists(name));
        EXPECT_EQ(textOf(folder->read(name, 10)), "error: this cannot be the name of a file");
        for (const auto& error :
             {folder->write(name, "x"), folder->rename(name, "other"), folder->rename("mine", name),
              folder->keep(name, "other"), folder->keep("mine", name), folder->remove(name)}) {
            EXPECT_EQ(textOf(error), "this cannot be the name of a file");
        }
    }
    EXPECT_EQ(namesIn(path), Names{"mine"});
    EXPECT_EQ(readFile(path / "mine"), "mine");
}

TEST_F(FolderTest, NamesOf255BytesServeForEverything) {
    const std::string name(255, 'x');
    const std::string other(255, 'y');
    EXPECT_EQ(textOf(folder->write(name, "one")), "");
    EXPECT_EQ(textOf(folder->write(name, "two")), "");
    EXPECT_EQ(textOf(folder->read(name, 10)), "two");
    EXPECT_EQ(textOf(folder->keep(name, other)), "");
    EXPECT_EQ(textOf(folder->rename(name, std::string(255, 'z'))), "");
    EXPECT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(folder->makeFolder(name)));
    EXPECT_EQ(textOf(folder->remove(name)), "");
    EXPECT_EQ(namesIn(path), (Names{other, std::string(255, 'z')}));
}

TEST_F(FolderTest, FilesAndFoldersAreTheirUsersAlone) {
    EXPECT_EQ(textOf(folder->write("file", "x")), "");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(folder->makeFolder("inner")));
    EXPECT_EQ(fs::status(path / "file").permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(path / "inner").permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0700));
}

TEST_F(FolderTest, ReplacedFileKeepsItsMode) {
    EXPECT_EQ(textOf(folder->write("file", "x")), "");
    ASSERT_EQ(::chmod((path / "file").c_str(), 0444), 0);
    EXPECT_EQ(textOf(folder->write("file", "y")), "");
    EXPECT_EQ(fs::status(path / "file").permissions(), fs::perms(0644));
}

TEST_F(FolderTest, ReadsNoMoreThanItMay) {
    writeFile(path / "file", "12345");
    EXPECT_EQ(textOf(folder->read("file", 5)), "12345");
    EXPECT_EQ(textOf(folder->read("file", 4)),
              "error: cannot read " + (path / "file").string() + ": File too large");
    EXPECT_EQ(textOf(folder->read("other", 4)),
              "error: cannot read " + (path / "other").string() + ": No such file or directory");
}

TEST_F(FolderTest, OnlyRegularFilesAreRead) {
    fs::create_symlink(outside / "kept", path / "link");
    fs::create_directory(path / "folder");
    ASSERT_EQ(::mkfifo((path / "pipe").c_str(), 0600), 0);
    for (const std::string name : {"link", "folder", "pipe"}) {
        EXPECT_EQ(textOf(folder->read(name, 100)),
                  "error: cannot read " + (path / name).string() + ": it is no regular file");
        EXPECT_TRUE(folder->exists(name));
    }
}

TEST_F(FolderTest, LinksAndPipesAreReplacedAndFoldersAreNot) {
    fs::create_symlink(outside / "kept", path / "link");
    fs::create_symlink(outside / "missing", path / "dangling");
    fs::create_hard_link(path / "link", path / "second");
    ASSERT_EQ(::mkfifo((path / "pipe").c_str(), 0600), 0);
    for (const std::string name : {"link", "dangling", "second", "pipe"}) {
        EXPECT_EQ(textOf(folder->write(name, "new")), "");
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path / name)));
        EXPECT_EQ(readFile(path / name), "new");
    }
    writeFile(path / "folder" / "inside", "x");
    EXPECT_EQ(textOf(folder->write("folder", "new")),
              "cannot replace " + (path / "folder").string() + ": Is a directory");
    EXPECT_EQ(namesIn(path), (Names{"dangling", "folder", "link", "pipe", "second"}));
}

TEST_F(FolderTest, LinkWhereAFolderIsWantedIsRefused) {
    fs::create_symlink(outside / "folder", path / "tool");
    EXPECT_EQ(std::get<FileError>(folder->makeFolder("tool")).description,
              "cannot make the folder " + (path / "tool").string() + ": Not a directory");
}

TEST_F(FolderTest, SupportFolderItselfMayBeALink) {
    fs::create_directory_symlink(path, temporary.path() / "link");
    auto linked = files.makeFolder(temporary.path() / "link" / "below");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(linked));
    EXPECT_EQ(textOf(std::get<std::unique_ptr<Folder>>(linked)->write("file", "x")), "");
    EXPECT_EQ(readFile(path / "below" / "file"), "x");
}

TEST_F(FolderTest, StaysTheSameFolderWhenItIsMovedAndALinkTakesItsPlace) {
    fs::rename(path, temporary.path() / "moved");
    fs::create_directory_symlink(outside, path);
    EXPECT_EQ(textOf(folder->write("kept", "mine")), "");
    EXPECT_EQ(textOf(folder->remove("folder")), "");
    EXPECT_EQ(readFile(temporary.path() / "moved" / "kept"), "mine");
}

TEST_F(FolderTest, RemovedFolderSaysSo) {
    fs::remove_all(path);
    EXPECT_EQ(textOf(folder->write("file", "x")),
              "cannot make a file in " + path.string() + ": No such file or directory");
    EXPECT_EQ(textOf(folder->remove("file")), "");
    EXPECT_FALSE(folder->exists("file"));
    EXPECT_TRUE(std::holds_alternative<FileError>(folder->makeFolder("inner")));
    EXPECT_TRUE(std::holds_alternative<FileError>(files.openFolder(path)));
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(FolderTest, FileInTheFoldersPlaceIsAnError) {
    writeFile(path / "file", "x");
    EXPECT_EQ(std::get<FileError>(files.makeFolder(path / "file")).description,
              "cannot make the folder " + (path / "file").string() + ": File exists");
    EXPECT_EQ(std::get<FileError>(files.makeFolder(path / "file" / "below")).description,
              "cannot make the folder " + (path / "file" / "below").string() + ": Not a directory");
    EXPECT_EQ(readFile(path / "file"), "x");
}

TEST_F(FolderTest, KeptFileIsNeverReplaced) {
    writeFile(path / "file", "second");
    writeFile(path / "kept", "first");
    EXPECT_NE(textOf(folder->keep("file", "kept")), "");
    EXPECT_EQ(readFile(path / "kept"), "first");
    EXPECT_EQ(textOf(folder->keep("file", "kept-2")), "");
    EXPECT_EQ(readFile(path / "kept-2"), "second");
    EXPECT_EQ(readFile(path / "file"), "second");
    EXPECT_NE(textOf(folder->keep("missing", "kept-3")), "");
}

TEST_F(FolderTest, KeptLinkIsKeptAsALinkAndAFolderLosesItsName) {
    fs::create_symlink(outside / "kept", path / "link");
    EXPECT_EQ(textOf(folder->keep("link", "kept")), "");
    EXPECT_EQ(fs::read_symlink(path / "kept"), outside / "kept");
    writeFile(path / "folder" / "inside", "x");
    EXPECT_NE(textOf(folder->keep("folder", "kept")), "");
    EXPECT_EQ(textOf(folder->keep("folder", "kept-2")), "");
    EXPECT_EQ(readFile(path / "kept-2" / "inside"), "x");
    EXPECT_EQ(namesIn(path), (Names{"kept", "kept-2", "link"}));
}

TEST_F(FolderTest, ErrorsAreOneLineWhateverTheName) {
    EXPECT_EQ(textOf(folder->read("a\nb\x1b[1m", 1)),
              "error: cannot read " + path.string() + "/a?b?[1m: No such file or directory");
}

TEST_F(FolderTest, TemporariesOfDeadWritersGoAndThoseOfTheLivingStay) {
    for (const std::string& name : {"file"s, std::string(255, 'x')}) {
        const std::string prefix = name.substr(0, 244) + ".tmp-";
        writeFile(path / (prefix + "abcdef"), "of a dead writer");
        writeFile(path / (prefix + "notes"), "mine");
        fs::create_symlink(outside / "kept", path / (prefix + "link12"));
        fs::create_directory(path / (prefix + "folder"));
        const auto opened = openedFolder(path);
        AtomicFile living(opened.get(), path / name);
        ASSERT_EQ(living.write("living"), std::nullopt);
        EXPECT_EQ(textOf(folder->write(name, "new")), "");
        EXPECT_FALSE(fs::exists(path / (prefix + "abcdef")));
        EXPECT_EQ(namesIn(path).size(), 5U); // with the living one's and the file
        EXPECT_EQ(readFile(path / name), "new");
        EXPECT_EQ(living.commit(), std::nullopt);
        EXPECT_EQ(readFile(path / name), "living");
        Names expected{name, prefix + "folder", prefix + "link12", prefix + "notes"};
        std::ranges::sort(expected);
        EXPECT_EQ(namesIn(path), expected);
        for (const auto& left : namesIn(path)) {
            fs::remove(path / left);
        }
    }
}

} // namespace
} // namespace quillon
