#include "Platform/MacOS/MacBundle.h"
#include "Platform/MacOS/MacFileManager.h"
#include "Platform/MacOS/MacLoginItem.h"
#include "Platform/MacOS/MacUpdaters.h"
#include "Platform/MacOS/NativeViews.h"

#include "fakes/FakeInstallation.h"
#include "fakes/Foundation.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon {
namespace {

using fakes::fakeInstallation;

class InstallationTest : public testing::Test {
  protected:
    InstallationTest() { fakeInstallation().reset(); }
};

TEST_F(InstallationTest, TheIdentifierIsTheBundlesWhereItCanNameAFolder) {
    const MacBundle bundle;
    fakeInstallation().bundleIdentifier = "com.example.App";
    EXPECT_EQ(bundle.identifier(), "com.example.App");
    fakeInstallation().bundleIdentifier = "../elsewhere";
    EXPECT_EQ(bundle.identifier(), "com.pelorin.PelorinApp");
    fakeInstallation().bundleIdentifier = std::nullopt;
    EXPECT_EQ(bundle.identifier(), "com.pelorin.PelorinApp");
}

TEST_F(InstallationTest, OnlyTextsOfTheInformationDictionaryAreAnswered) {
    const MacBundle bundle;
    fakeInstallation().setInfo("HubCatalogBaseURL", (void*)@"https://quillon.example");
    fakeInstallation().setInfo("Number", (void*)[NSNumber numberWithInteger:1]);
    EXPECT_EQ(bundle.infoString("HubCatalogBaseURL"), "https://quillon.example");
    EXPECT_EQ(bundle.infoString("Number"), std::nullopt);
    EXPECT_EQ(bundle.infoString("Missing"), std::nullopt);
    EXPECT_EQ(bundle.infoString("\xff"), std::nullopt);
}

TEST_F(InstallationTest, TheLoginItemIsTheMainServiceWhoseStatusIsEnabled) {
    MacLoginItem item;
    EXPECT_TRUE(item.isSupported());
    for (const long status : {0, 1, 2, 3}) {
        fakeInstallation().loginItemStatus = status;
        EXPECT_EQ(item.isEnabled(), status == 1) << status;
    }
    EXPECT_EQ(item.registerService(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(item.unregisterService(), std::nullopt);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(fakeInstallation().loginItemCalls,
              (std::vector<std::string>{"register", "unregister"}));
}

TEST_F(InstallationTest, ALoginItemThatCannotBeChangedSaysWhy) {
    MacLoginItem item;
    fakeInstallation().loginItemFailure = "Operation not permitted";
    EXPECT_EQ(item.registerService(), "Operation not permitted");
    EXPECT_EQ(item.unregisterService(), "Operation not permitted");
    EXPECT_FALSE(item.isEnabled());
}

struct FeedOf final : UpdaterDelegate {
    std::optional<std::string> feedURLStringForUpdater() override { return feed; }
    std::optional<std::string> feed;
};

TEST_F(InstallationTest, AnUpdaterIsStartedWithADelegateAndNoUserDriverDelegate) {
    NativeViews views;
    MacUpdaters updaters(views);
    const auto delegate = std::make_shared<FeedOf>();
    const auto controller = updaters.makeController(true, delegate);
    ASSERT_EQ(fakeInstallation().updaterRequests.size(), 1U);
    EXPECT_TRUE(fakeInstallation().updaterRequests[0].startsUpdater);
    EXPECT_TRUE(fakeInstallation().updaterRequests[0].hasDelegate);
    EXPECT_FALSE(fakeInstallation().updaterRequests[0].hasUserDriverDelegate);
    controller->checkForUpdates(nullptr);
    EXPECT_EQ(fakeInstallation().updateChecks, std::vector<bool>{false});
    Sender item;
    const id native = [[NSObject alloc] init];
    views.add(item, native);
    controller->checkForUpdates(&item);
    EXPECT_EQ(fakeInstallation().updateChecks, (std::vector<bool>{false, true})) << "its sender";
    const auto notStarted = updaters.makeController(false, delegate);
    EXPECT_FALSE(fakeInstallation().updaterRequests.at(1).startsUpdater);
}

TEST_F(InstallationTest, TheUpdatersDelegateIsAskedForTheFeedAndHeldWeakly) {
    NativeViews views;
    MacUpdaters updaters(views);
    auto delegate = std::make_shared<FeedOf>();
    const auto controller = updaters.makeController(true, delegate);
    EXPECT_EQ(fakeInstallation().askedFeed(), std::nullopt) << "that of the bundle";
    delegate->feed = "https://quillon.example/feed";
    EXPECT_EQ(fakeInstallation().askedFeed(), "https://quillon.example/feed");
    delegate.reset();
    EXPECT_EQ(fakeInstallation().askedFeed(), std::nullopt);
}

TEST_F(InstallationTest, TheUsersFoldersAreThoseThatTheSystemNames) {
    MacFileManager files;
    EXPECT_EQ(files.applicationSupportDirectory(), std::nullopt);
    fakeInstallation().searchPaths = {"/Users/me/Library/Application Support"};
    EXPECT_EQ(files.applicationSupportDirectory(), "/Users/me/Library/Application Support");
    ASSERT_EQ(fakeInstallation().folderRequests.size(), 2U);
    EXPECT_EQ(fakeInstallation().folderRequests[0].directory, 14U);
    EXPECT_EQ(fakeInstallation().folderRequests[0].domains, 1U);
    EXPECT_TRUE(fakeInstallation().folderRequests[0].expandsTilde);
    fakeInstallation().temporaryFolder = "/var/folders/x/T/";
    EXPECT_EQ(files.temporaryDirectory(), "/var/folders/x/T/");
}

} // namespace
} // namespace quillon
