#include "Conformance.h"

namespace quillon {
namespace {

using namespace std::string_literals;

class FileManagerConformance : public Conformance {
  protected:
    FileManagerConformance() : path(world->folder()) {
        auto opened = platform().files.openFolder(path);
        EXPECT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(opened));
        if (auto* found = std::get_if<std::unique_ptr<Folder>>(&opened)) {
            folder = std::move(*found);
        }
    }
    void SetUp() override { ASSERT_TRUE(folder); }

    /// The content, or nothing upon an error, which says something in one line.
    [[nodiscard]] std::optional<std::string> read(std::string_view name,
                                                  std::size_t largest = 1000) const {
        const auto result = folder->read(name, largest);
        if (const auto* error = std::get_if<FileError>(&result)) {
            EXPECT_FALSE(error->description.empty());
            EXPECT_EQ(error->description.find('\n'), std::string::npos);
            return std::nullopt;
        }
        return std::get<std::string>(result);
    }

    [[nodiscard]] bool makesFolder(std::string_view name) const {
        return std::holds_alternative<std::unique_ptr<Folder>>(folder->makeFolder(name));
    }

    std::filesystem::path path;
    std::unique_ptr<Folder> folder;
};

TEST_F(FileManagerConformance, WhatIsNoNameIsRefusedByEverything) {
    EXPECT_FALSE(folder->write("mine", "mine"));
    for (const std::string& name :
         {""s, "."s, ".."s, "a/b"s, "/a"s, "a/"s, "../up"s, "a\0b"s, std::string(256, 'x')}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(makesFolder(name));
        EXPECT_FALSE(folder->exists(name));
        EXPECT_FALSE(read(name));
        EXPECT_TRUE(folder->write(name, "x"));
        EXPECT_TRUE(folder->rename(name, "other"));
        EXPECT_TRUE(folder->rename("mine", name));
        EXPECT_TRUE(folder->keep(name, "other"));
        EXPECT_TRUE(folder->keep("mine", name));
        EXPECT_TRUE(folder->remove(name));
    }
    EXPECT_EQ(world->fileContent(path / "mine"), "mine");
    EXPECT_FALSE(folder->exists("other"));
}

TEST_F(FileManagerConformance, NamesOf255BytesServe) {
    const std::string name(255, 'x');
    EXPECT_FALSE(folder->write(name, "one"));
    EXPECT_EQ(read(name), "one");
    EXPECT_FALSE(folder->rename(name, std::string(255, 'y')));
    EXPECT_TRUE(folder->exists(std::string(255, 'y')));
}

TEST_F(FileManagerConformance, ReadsNoMoreThanItMay) {
    world->putFile(path / "file", "12345");
    EXPECT_EQ(read("file", 5), "12345");
    EXPECT_EQ(read("file", 4), std::nullopt);
    EXPECT_EQ(read("missing"), std::nullopt);
    EXPECT_FALSE(folder->exists("missing"));
}

TEST_F(FileManagerConformance, WritesReplaceFilesAndNotFolders) {
    const std::string bytes("\0\xff\n", 3);
    EXPECT_FALSE(folder->write("file", "old"));
    EXPECT_FALSE(folder->write("file", bytes));
    EXPECT_EQ(world->fileContent(path / "file"), bytes);
    ASSERT_TRUE(makesFolder("within"));
    EXPECT_TRUE(folder->write("within", "x"));
    EXPECT_TRUE(makesFolder("within")) << "one that is there is no error";
    EXPECT_FALSE(makesFolder("file"));
}

TEST_F(FileManagerConformance, AWriteReplacesALinkAndNotWhatItLeadsTo) {
    world->putFile(path / "target", "target");
    world->putLink(path / "link", path / "target");
    EXPECT_TRUE(folder->exists("link"));
    EXPECT_EQ(read("link"), std::nullopt) << "no regular file";
    EXPECT_FALSE(folder->write("link", "new"));
    EXPECT_EQ(read("link"), "new");
    EXPECT_EQ(world->fileContent(path / "target"), "target");
}

TEST_F(FileManagerConformance, WhatWasReadBeforeAWriteStaysWhole) {
    // Whoever has the old file under another name keeps it: the new one takes its place.
    EXPECT_FALSE(folder->write("file", "old"));
    EXPECT_FALSE(folder->keep("file", "kept"));
    EXPECT_FALSE(folder->write("file", "new"));
    EXPECT_EQ(world->fileContent(path / "kept"), "old");
    EXPECT_EQ(world->fileContent(path / "file"), "new");
}

TEST_F(FileManagerConformance, ALinkWhereAFolderIsWantedIsRefused) {
    ASSERT_TRUE(makesFolder("real"));
    world->putLink(path / "link", path / "real");
    EXPECT_FALSE(makesFolder("link"));
    world->putLink(path / "dangling", path / "nowhere");
    EXPECT_TRUE(folder->exists("dangling"));
    EXPECT_FALSE(makesFolder("dangling"));
}

TEST_F(FileManagerConformance, ALinkGoesAndNotWhatItLeadsTo) {
    ASSERT_TRUE(makesFolder("real"));
    world->putFile(path / "real" / "file", "x");
    world->putLink(path / "link", path / "real");
    EXPECT_FALSE(folder->remove("link"));
    EXPECT_FALSE(folder->exists("link"));
    EXPECT_EQ(world->fileContent(path / "real" / "file"), "x");
}

TEST_F(FileManagerConformance, KeepMakesASecondNameThatNothingHad) {
    EXPECT_FALSE(folder->write("file", "content"));
    EXPECT_FALSE(folder->write("other", "other"));
    EXPECT_TRUE(folder->keep("file", "other"));
    EXPECT_EQ(read("other"), "other");
    EXPECT_FALSE(folder->keep("file", "kept"));
    EXPECT_EQ(read("file"), "content");
    EXPECT_EQ(read("kept"), "content");
    EXPECT_TRUE(folder->keep("missing", "again"));
    EXPECT_FALSE(folder->exists("again"));
}

TEST_F(FileManagerConformance, AKeptFolderHasOnlyItsSecondName) {
    ASSERT_TRUE(makesFolder("folder"));
    world->putFile(path / "folder" / "file", "x");
    EXPECT_FALSE(folder->keep("folder", "kept"));
    EXPECT_EQ(world->fileContent(path / "kept" / "file"), "x");
    EXPECT_FALSE(folder->exists("folder"));
}

TEST_F(FileManagerConformance, RenameTakesThePlaceOfAFileOrLink) {
    EXPECT_FALSE(folder->write("file", "content"));
    EXPECT_FALSE(folder->write("other", "other"));
    EXPECT_FALSE(folder->rename("file", "other"));
    EXPECT_FALSE(folder->exists("file"));
    EXPECT_EQ(read("other"), "content");
    world->putFile(path / "target", "target");
    world->putLink(path / "link", path / "target");
    EXPECT_FALSE(folder->rename("other", "link"));
    EXPECT_EQ(read("link"), "content");
    EXPECT_EQ(world->fileContent(path / "target"), "target");
    EXPECT_TRUE(folder->rename("missing", "link"));
    EXPECT_EQ(read("link"), "content");
}

TEST_F(FileManagerConformance, AFileDoesNotTakeThePlaceOfAFolder) {
    EXPECT_FALSE(folder->write("file", "content"));
    ASSERT_TRUE(makesFolder("within"));
    EXPECT_TRUE(folder->rename("file", "within"));
    EXPECT_EQ(read("file"), "content");
    EXPECT_TRUE(makesFolder("within"));
}

TEST_F(FileManagerConformance, ARenamedFolderTakesWithItWhatIsInIt) {
    ASSERT_TRUE(makesFolder("old"));
    world->putFile(path / "old" / "file", "x");
    EXPECT_FALSE(folder->rename("old", "new"));
    EXPECT_EQ(world->fileContent(path / "new" / "file"), "x");
    EXPECT_EQ(world->fileContent(path / "old" / "file"), std::nullopt);
}

TEST_F(FileManagerConformance, RemoveTakesEverythingWithin) {
    ASSERT_TRUE(makesFolder("within"));
    world->putFile(path / "within" / "deep" / "file", "x");
    EXPECT_FALSE(folder->remove("within"));
    EXPECT_FALSE(folder->exists("within"));
    EXPECT_EQ(world->fileContent(path / "within" / "deep" / "file"), std::nullopt);
    EXPECT_FALSE(folder->remove("within")) << "what is not there is no error";
}

TEST_F(FileManagerConformance, FoldersAreMadeWithTheirParentsAndOpenedWhenTheyAreThere) {
    FileManager& files = platform().files;
    const auto deep = path / "a" / "b" / "c";
    EXPECT_TRUE(std::holds_alternative<FileError>(files.openFolder(deep)));
    auto made = files.makeFolder(deep);
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(made));
    EXPECT_FALSE(std::get<std::unique_ptr<Folder>>(made)->write("file", "x"));
    EXPECT_EQ(world->fileContent(deep / "file"), "x");
    EXPECT_TRUE(std::holds_alternative<std::unique_ptr<Folder>>(files.openFolder(deep)));
    EXPECT_TRUE(std::holds_alternative<FileError>(files.openFolder(deep / "file")));
    EXPECT_TRUE(std::holds_alternative<FileError>(files.makeFolder(deep / "file")));
}

TEST_F(FileManagerConformance, ThereIsAPlaceForWhatApplicationsKeep) {
    const auto support = platform().files.applicationSupportDirectory();
    ASSERT_TRUE(support);
    EXPECT_TRUE(support->is_absolute());
    EXPECT_TRUE(platform().files.temporaryDirectory().is_absolute());
}

} // namespace
} // namespace quillon
