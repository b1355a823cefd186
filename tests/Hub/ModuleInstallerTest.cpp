#include "Hub/ModuleInstaller.h"

#include "support/HubBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

constexpr const char* packageBody = "abc";
constexpr const char* packageDigest =
    "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"; // of "abc"
constexpr const char* tool = "tool.mediaControl";

using Kind = SimulatedFileManager::Kind;

class Installing : public testing::Test, public HubBench {
  protected:
    Installing() {
        item.downloadURL = packageUrl;
        desktop.urls.answer(packageUrl, 200, packageBody);
    }

    /// What an install brings, if it brings anything within this time.
    std::optional<FileResult<InstalledToolRecord>> install(double seconds = 0) {
        std::optional<FileResult<InstalledToolRecord>> result;
        installer.install(item, [&](auto outcome) { result = std::move(outcome); });
        EXPECT_FALSE(result) << "after the call has returned";
        advance(seconds);
        return result;
    }

    InstalledToolRecord installed(double seconds = 0) {
        auto result = install(seconds);
        EXPECT_TRUE(result && std::holds_alternative<InstalledToolRecord>(*result));
        return std::get<InstalledToolRecord>(result.value());
    }

    [[nodiscard]] std::optional<std::string> content(const std::string& name) const {
        return desktop.files.content(file(item.id) / name);
    }
    [[nodiscard]] bool hasFolder() const { return desktop.files.entries.contains(file(item.id)); }

    void expectFallback(const std::string& reason) {
        const auto record = installed();
        EXPECT_TRUE(record.isEnabled);
        EXPECT_FALSE(record.isDownloaded);
        EXPECT_EQ(content("package.placeholder"),
                  "Placeholder package for " + item.id + " (1.0.0)");
        EXPECT_EQ(takeLines(),
                  std::vector<std::string>{"Install fallback for " + item.id + ": " + reason});
    }

    ToolCatalogItem item = builtInCatalog()[1];
    ModuleInstaller installer{services, desktop.runLoop.makeSerialQueue("test")};
};

TEST_F(Installing, WithoutAPackageOnlyTheFolderIsMade) {
    for (const std::optional<std::string>& none :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("http://not an address")}) {
        item.downloadURL = none;
        EXPECT_EQ(installed(), (InstalledToolRecord{.id = tool,
                                                    .version = "1.0.0",
                                                    .installedAt = {},
                                                    .isEnabled = true,
                                                    .isDownloaded = false}));
    }
    EXPECT_TRUE(hasFolder());
    EXPECT_EQ(desktop.files.writes, 0);
    EXPECT_TRUE(desktop.urls.requests().empty());
    EXPECT_TRUE(lines.empty());
}

TEST_F(Installing, APackageIsPutInPlace) {
    item.version = "2.1";
    advance(100.75);
    EXPECT_EQ(installed(), (InstalledToolRecord{
                               .id = tool,
                               .version = "2.1",
                               .installedAt = std::chrono::sys_seconds(std::chrono::seconds(100)),
                               .isEnabled = true,
                               .isDownloaded = true}));
    EXPECT_EQ(content("package.bin"), packageBody);
    EXPECT_FALSE(content("package.tmp"));
    EXPECT_FALSE(content("package.placeholder"));
    EXPECT_EQ(desktop.urls.requests().back().largestBody, ModuleInstaller::largestPackage);
    EXPECT_TRUE(lines.empty());
}

TEST_F(Installing, ASecondPackageReplacesTheFirst) {
    installed();
    desktop.urls.answer(packageUrl, 204, "");
    EXPECT_TRUE(installed().isDownloaded);
    EXPECT_EQ(content("package.bin"), "");
}

TEST_F(Installing, TheDigestIsCheckedWhateverItsCase) {
    std::string digest = packageDigest;
    for (int round = 0; round < 2; ++round) {
        item.sha256 = digest;
        EXPECT_TRUE(installed().isDownloaded) << digest;
        std::ranges::transform(digest, digest.begin(), [](char c) { return std::toupper(c); });
    }
    item.sha256 = "";
    EXPECT_TRUE(installed().isDownloaded) << "an empty one is none";
}

TEST_F(Installing, AWrongDigestLeavesAPlaceholderBesideTheEarlierPackage) {
    installed();
    desktop.urls.answer(packageUrl, 200, "abd");
    item.sha256 = packageDigest;
    expectFallback("Tool signature verification failed");
    EXPECT_EQ(content("package.bin"), packageBody);
    for (const std::string& wrong : {std::string(packageDigest) + "0", std::string("x"),
                                     std::string(packageDigest).substr(1)}) {
        desktop.urls.answer(packageUrl, 200, packageBody);
        item.sha256 = wrong;
        expectFallback("Tool signature verification failed");
    }
}

TEST_F(Installing, ADownloadThatFailsLeavesAPlaceholder) {
    for (const int status : {199, 300, 301, 404, 500}) {
        desktop.urls.answer(packageUrl, status, packageBody);
        expectFallback("Tool download failed");
    }
    desktop.urls.fail(packageUrl, "The network connection was lost.");
    expectFallback("The network connection was lost.");
    EXPECT_FALSE(content("package.bin"));
}

TEST_F(Installing, ErrorsAreNumbered) {
    EXPECT_STREQ(InstallError::domain, "ModuleInstaller");
    EXPECT_EQ(downloadFailed().code, 1);
    EXPECT_EQ(downloadFailed().description, "Tool download failed");
    EXPECT_EQ(verificationFailed().code, 2);
    EXPECT_EQ(verificationFailed().description, "Tool signature verification failed");
}

TEST_F(Installing, APackageThatCannotBeWrittenIsOneThatWasNotDownloaded) {
    desktop.urls.answer(packageUrl, 200, packageBody, 1);
    installer.install(item, [](const auto&) {});
    advance(0.5); // the folder is made
    desktop.files.failure = "the disk is full";
    std::optional<FileResult<InstalledToolRecord>> result;
    installer.install(item, [&](auto outcome) { result = std::move(outcome); });
    advance(2);
    ASSERT_TRUE(result);
    EXPECT_FALSE(std::get<InstalledToolRecord>(*result).isDownloaded);
    EXPECT_EQ(takeLines().back(), "Install fallback for " + item.id + ": the disk is full");
    EXPECT_FALSE(content("package.placeholder"));
}

TEST_F(Installing, WithoutAFolderThereIsNoTool) {
    desktop.files.failure = "no space";
    EXPECT_EQ(std::get<FileError>(install().value()).description, "no space");
    desktop.files.failure.reset();
    desktop.files.support.reset();
    EXPECT_TRUE(std::holds_alternative<FileError>(install().value()));
    EXPECT_TRUE(desktop.urls.requests().empty());
}

TEST_F(Installing, WhatCannotNameAFolderHasNone) {
    for (const std::string& id : {std::string(), std::string("."), std::string(".."),
                                  std::string("../x"), std::string("/tmp/x"), std::string("a/b"),
                                  std::string("a\0b", 3), std::string(256, 'a')}) {
        item.id = id;
        EXPECT_TRUE(std::holds_alternative<FileError>(install().value())) << id;
        std::optional<FileError> failure;
        installer.uninstall(id, [&](FileError error) { failure = std::move(error); });
        settle();
        EXPECT_TRUE(failure) << id;
    }
    item.id = std::string(255, 'a');
    EXPECT_TRUE(std::holds_alternative<InstalledToolRecord>(install().value()));
}

TEST_F(Installing, ALinkIsNoFolder) {
    desktop.files.put(file(tool), {Kind::link, "/etc"});
    EXPECT_TRUE(std::holds_alternative<FileError>(install().value()));
}

TEST_F(Installing, UninstallingRemovesTheFolderWithEverythingInIt) {
    installed();
    desktop.files.put(file(item.id) / "more/below", {Kind::file, "x"});
    desktop.files.put(file("tool.mediaControlX/file"), {Kind::file, "x"});
    bool failed = false;
    installer.uninstall(item.id, [&](const FileError&) { failed = true; });
    settle();
    EXPECT_FALSE(hasFolder());
    EXPECT_FALSE(desktop.files.entries.contains(file(item.id) / "more/below"));
    EXPECT_TRUE(desktop.files.entries.contains(file("tool.mediaControlX/file")));
    installer.uninstall(item.id, [&](const FileError&) { failed = true; });
    settle();
    EXPECT_FALSE(failed) << "no folder is no error";
}

TEST_F(Installing, AFailedRemovalIsTold) {
    installed();
    desktop.files.failure = "it is read-only";
    std::string told;
    installer.uninstall(item.id, [&](const FileError& error) { told = error.description; });
    settle();
    EXPECT_EQ(told, "it is read-only");
}

TEST_F(Installing, GivenUpItTellsNobody) {
    desktop.urls.answer(packageUrl, 200, packageBody, 10);
    bool told = false;
    {
        ModuleInstaller shortLived(services, desktop.runLoop.makeSerialQueue("test"));
        shortLived.install(item, [&](const auto&) { told = true; });
        advance(1);
        EXPECT_EQ(desktop.urls.underWay(), 1);
    }
    EXPECT_EQ(desktop.urls.underWay(), 0);
    advance(20);
    EXPECT_FALSE(told);
    EXPECT_FALSE(content("package.bin"));
}

} // namespace
} // namespace quillon
