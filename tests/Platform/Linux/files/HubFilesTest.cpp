#include "HubBench.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Lines = std::vector<std::string>;
using Names = std::vector<std::string>;

class HubFilesTest : public HubBench {
  protected:
    static constexpr const char* id = "tool.other";

    /// Installs the tool from a server that answers "the package".
    std::shared_ptr<HubToolStore> install() {
        desktop.urls.answer("http://tools/tool.other", 200, "the package");
        auto store = open({offered(id)});
        store->install(id);
        settle();
        store->flush();
        return store;
    }

    fs::path tool = temporary.path() / "data" / "com.pelorin.PelorinApp" / id;
};

TEST_F(HubFilesTest, InstalledToolHasItsPackageAndUninstalledNothing) {
    const auto store = install();
    EXPECT_EQ(namesIn(tool), Names{"package.bin"});
    EXPECT_EQ(readFile(tool / "package.bin"), "the package");
    EXPECT_EQ(recordsOnDisk(), store->installed());
    EXPECT_TRUE(store->installed().at(0).isDownloaded);
    store->uninstall(id);
    settle();
    store->flush();
    EXPECT_EQ(namesIn(path), Names{InstalledToolFile::fileName});
    EXPECT_EQ(recordsOnDisk(), InstalledTools{});
    EXPECT_EQ(said(), Lines{});
}

TEST_F(HubFilesTest, TwoInstallsAtOnceDoNotDisturbEachOther) {
    desktop.urls.answer("http://tools/tool.a", 200, std::string(3000000, 'a'), 2);
    desktop.urls.answer("http://tools/tool.b", 200, std::string(2000000, 'b'), 1);
    const auto store = open({offered("tool.a"), offered("tool.b")});
    store->install("tool.a");
    store->install("tool.b");
    desktop.runLoop.drain();
    desktop.runLoop.advance(0.5);
    EXPECT_EQ(desktop.urls.underWay(), 2);
    settle();
    store->flush();
    EXPECT_EQ(readFile(path / "tool.a" / "package.bin"), std::string(3000000, 'a'));
    EXPECT_EQ(readFile(path / "tool.b" / "package.bin"), std::string(2000000, 'b'));
    ASSERT_EQ(store->installed().size(), 2U);
    EXPECT_EQ(recordsOnDisk(), store->installed());
    EXPECT_EQ(said(), Lines{});
}

TEST_F(HubFilesTest, SameInstallTwiceAtOnceLeavesOnePackageAndOneRecord) {
    desktop.urls.answer("http://tools/tool.other", 200, "the package", 1);
    const auto store = open({offered(id)});
    store->install(id);
    store->install(id); // before the first has begun
    settle();
    store->flush();
    EXPECT_EQ(namesIn(tool), Names{"package.bin"});
    EXPECT_EQ(readFile(tool / "package.bin"), "the package");
    ASSERT_EQ(store->installed().size(), 1U);
    EXPECT_EQ(recordsOnDisk(), store->installed());
    EXPECT_EQ(store->installingToolIDs().size(), 0U);
    EXPECT_EQ(said(), Lines{});
}

TEST_F(HubFilesTest, TwoStoresInstallTheSameToolIntoOneFolder) {
    const auto first = install();
    const auto second = open({offered(id)});
    desktop.urls.answer("http://tools/tool.other", 200, "a newer package");
    second->install(id);
    first->install(id);
    settle();
    EXPECT_TRUE(first->flush());
    EXPECT_TRUE(second->flush());
    EXPECT_EQ(namesIn(tool), Names{"package.bin"});
    EXPECT_EQ(readFile(tool / "package.bin"), "a newer package");
    EXPECT_TRUE(recordsOnDisk());
}

TEST_F(HubFilesTest, IdsThatAreNoNamesTouchNothing) {
    const auto before = install();
    const auto state = stateOf(temporary.path());
    for (const auto& bad :
         {""s, "."s, ".."s, "a/b"s, "../../outside"s, "a\0b"s, std::string(256, 'x')}) {
        SCOPED_TRACE(bad);
        const auto store = open({offered(bad)});
        store->install(bad);
        settle();
        EXPECT_EQ(said(),
                  Lines{"Install failed for " + bad + ": this cannot be the name of a folder"});
        EXPECT_FALSE(store->isInstalled(bad));
        EXPECT_EQ(stateOf(temporary.path()), state);
        store->uninstall(bad);
        settle();
        EXPECT_EQ(said(),
                  Lines{"Uninstall failed for " + bad + ": this cannot be the name of a file"});
        EXPECT_EQ(namesIn(path), (Names{InstalledToolFile::fileName, id}));
        EXPECT_EQ(readFile(tool / "package.bin"), "the package");
    }
}

TEST_F(HubFilesTest, LinkAtTheToolsFolderFailsTheInstallAndGoesWithTheUninstall) {
    fs::create_directories(path);
    fs::create_directory_symlink(outside / "folder", tool);
    const auto store = install();
    EXPECT_EQ(said(), Lines{"Install failed for tool.other: cannot make the folder " +
                            tool.string() + ": Not a directory"});
    EXPECT_FALSE(store->isInstalled(id));
    store->uninstall(id);
    settle();
    EXPECT_FALSE(fs::exists(fs::symlink_status(tool)));
    EXPECT_EQ(said(), Lines{});
}

/// What has a file's name is replaced by the file; only a folder stays, and costs the package.
TEST_F(HubFilesTest, WhatIsPlantedAtThePackagesNamesLeadsNowhere) {
    for (const std::string name : {"package.bin", "package.tmp", "package.placeholder"}) {
        for (const std::string kind : {"link", "dangling", "hard link", "pipe", "folder"}) {
            SCOPED_TRACE(name + " " + kind);
            fs::remove_all(path);
            fs::create_directories(tool);
            if (kind == "link") {
                fs::create_symlink(outside / "kept", tool / name);
            } else if (kind == "dangling") {
                fs::create_symlink(outside / "missing", tool / name);
            } else if (kind == "hard link") {
                writeFile(temporary.path() / "other", "other's");
                fs::create_hard_link(temporary.path() / "other", tool / name);
            } else if (kind == "pipe") {
                ASSERT_EQ(::mkfifo((tool / name).c_str(), 0600), 0);
            } else {
                writeFile(tool / name / "inside", "x");
            }
            const auto store = install();
            EXPECT_TRUE(store->isInstalled(id));
            const bool isInTheWay = kind == "folder" && name != "package.placeholder";
            EXPECT_EQ(said().size(), isInTheWay ? 1U : 0U);
            EXPECT_EQ(store->installed().at(0).isDownloaded, !isInTheWay);
            EXPECT_EQ(readFile(tool / "package.bin"), isInTheWay ? "" : "the package");
            EXPECT_EQ(fs::exists(tool / "package.tmp"), isInTheWay);

            desktop.urls.answer("http://tools/tool.other", 404, "");
            store->install(id);
            settle();
            EXPECT_EQ(said(), Lines{"Install fallback for tool.other: Tool download failed"});
            if (name != "package.placeholder" || kind != "folder") {
                EXPECT_EQ(readFile(tool / "package.placeholder"),
                          "Placeholder package for tool.other (2.0)");
            }
            store->uninstall(id);
            settle();
            EXPECT_FALSE(fs::exists(tool));
            EXPECT_EQ(said(), Lines{});
            if (kind == "hard link") {
                EXPECT_EQ(readFile(temporary.path() / "other"), "other's");
            }
        }
    }
}

TEST_F(HubFilesTest, SupportFolderThatGoesWhileRunningIsMadeAnew) {
    const auto store = install();
    fs::remove_all(path.parent_path());
    store->setEnabled(id, false);
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(recordsOnDisk(), store->installed());
    fs::remove_all(path.parent_path());
    store->install(id);
    settle();
    EXPECT_EQ(readFile(tool / "package.bin"), "the package");
    fs::remove_all(path.parent_path());
    store->uninstall(id);
    settle();
    EXPECT_EQ(said(), Lines{});
}

TEST_F(HubFilesTest, SupportFolderMayBeALink) {
    fs::create_directories(temporary.path() / "elsewhere");
    fs::create_directories(path.parent_path());
    fs::create_directory_symlink(temporary.path() / "elsewhere", path);
    const auto store = install();
    EXPECT_EQ(readFile(temporary.path() / "elsewhere" / id / "package.bin"), "the package");
    EXPECT_EQ(recordsOnDisk(), store->installed());
    EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(HubFilesTest, FullDiskCostsThePackageAndNothingThatWasThere) {
    const auto store = install();
    desktop.urls.answer("http://tools/tool.other", 200, "a newer package");
    setSystemCallHook([](const SystemCall& call) {
        return call.name == "write" && call.data.find("newer") != std::string_view::npos ? ENOSPC
                                                                                         : 0;
    });
    store->install(id);
    settle();
    EXPECT_EQ(said(), Lines{"Install fallback for tool.other: cannot write " +
                            (tool / "package.tmp").string() + ": No space left on device"});
    EXPECT_EQ(readFile(tool / "package.bin"), "the package");
    EXPECT_EQ(namesIn(tool), (Names{"package.bin", "package.placeholder"}));
}

} // namespace
} // namespace quillon
