#include "support/ShellBench.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AppDelegateMenuTest : public testing::Test {
  protected:
    void openMenu() {
        bench.launch();
        bench.take();
        bench.rightClick(bench.button());
    }
    void choose(const std::string& title) {
        MenuItem& item = bench.menuItem(title);
        item.action.perform(&item);
    }
    ShellBench bench;
};

TEST_F(AppDelegateMenuTest, ARightClickShowsItAndNeverToggles) {
    openMenu();
    EXPECT_THAT(bench.take(), ElementsAre("menu for the event"));
    bench.click(bench.button());
    bench.take();
    bench.rightClick(bench.button());
    EXPECT_THAT(bench.take(), ElementsAre("menu for the event"));
    EXPECT_TRUE(bench.desktop.popovers.shown);
}

TEST_F(AppDelegateMenuTest, ARightClickOnTheLevelShowsItAndLeavesTheLevel) {
    bench.launch();
    bench.showLevel(50);
    bench.take();
    bench.rightClick(*bench.level());
    EXPECT_THAT(bench.take(), ElementsAre("menu for the event"));
    EXPECT_TRUE(bench.level());
}

TEST_F(AppDelegateMenuTest, WithoutAnEventItHangsOnTheItem) {
    bench.launch();
    bench.take();
    bench.delegate->showContextMenu();
    EXPECT_THAT(bench.take(), ElementsAre("menu at 0.000000 22.000000"));
}

TEST_F(AppDelegateMenuTest, HasTheseItems) {
    openMenu();
    const auto& items = bench.desktop.menus.shown->items;
    ASSERT_EQ(items.size(), 5U);
    const std::vector<std::pair<std::string, std::string>> expected{
        {"Check for Updates...", "checkForUpdates:"},
        {"Launch at Login", "toggleLaunchAtLogin:"},
        {"Support", "openSupport"},
        {"", ""},
        {"Quit", "quitFromStatusMenu:"}};
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i]->title, expected[i].first);
        EXPECT_EQ(items[i]->action.name, expected[i].second);
        EXPECT_EQ(items[i]->isSeparator, i == 3);
        EXPECT_EQ(items[i]->keyEquivalent, i == 4 ? "q" : "");
        EXPECT_TRUE(items[i]->isEnabled);
        EXPECT_FALSE(items[i]->hasCheckMark);
    }
}

TEST_F(AppDelegateMenuTest, Updates) {
    openMenu();
    bench.take();
    choose("Check for Updates...");
    EXPECT_THAT(bench.take(), ElementsAre("updates check sender"));
}

TEST_F(AppDelegateMenuTest, Quit) {
    openMenu();
    bench.take();
    choose("Quit");
    EXPECT_THAT(bench.take(), ElementsAre("terminate sender"));
}

TEST_F(AppDelegateMenuTest, SupportOpensTheConfiguredPage) {
    bench.desktop.bundle.info["SupportURL"] = "https://example.org/contact";
    openMenu();
    bench.take();
    choose("Support");
    EXPECT_THAT(bench.take(), ElementsAre("open https://example.org/contact"));
}

TEST_F(AppDelegateMenuTest, SupportWithoutAUsableAddressDoesNothing) {
    openMenu();
    bench.take();
    choose("Support");
    for (const char* address : {"", "contact", "https://[", "http://a b/"}) {
        bench.desktop.bundle.info["SupportURL"] = address;
        choose("Support");
    }
    EXPECT_THAT(bench.take(), IsEmpty());
}

TEST_F(AppDelegateMenuTest, TheCheckMarkIsTheServicesState) {
    bench.desktop.loginItem.enabled = true;
    openMenu();
    EXPECT_TRUE(bench.menuItem("Launch at Login").hasCheckMark);
    choose("Launch at Login");
    EXPECT_FALSE(bench.desktop.loginItem.enabled);
    EXPECT_FALSE(bench.menuItem("Launch at Login").hasCheckMark);
    choose("Launch at Login");
    EXPECT_TRUE(bench.desktop.loginItem.enabled);
    EXPECT_TRUE(bench.menuItem("Launch at Login").hasCheckMark);
    EXPECT_TRUE(bench.desktop.alerts.shown.empty());
}

TEST_F(AppDelegateMenuTest, LaunchAtLoginWithoutAMenu) {
    bench.launch();
    bench.delegate->toggleLaunchAtLogin(nullptr);
    EXPECT_TRUE(bench.desktop.loginItem.enabled);
}

TEST_F(AppDelegateMenuTest, AFailureIsTold) {
    openMenu();
    bench.desktop.loginItem.failure = "The disk is full.";
    choose("Launch at Login");
    ASSERT_EQ(bench.desktop.alerts.shown.size(), 1U);
    const Alert& alert = bench.desktop.alerts.shown.front();
    EXPECT_EQ(alert.style, AlertStyle::warning);
    EXPECT_EQ(alert.messageText, "Could Not Update Launch at Login");
    EXPECT_EQ(alert.informativeText, "The disk is full.");
    EXPECT_THAT(alert.buttons, ElementsAre("OK"));
    EXPECT_FALSE(bench.menuItem("Launch at Login").hasCheckMark);
}

TEST_F(AppDelegateMenuTest, OnOlderSystemsLaunchAtLoginIsDisabled) {
    bench.desktop.loginItem.supported = false;
    bench.desktop.loginItem.enabled = true;
    openMenu();
    EXPECT_FALSE(bench.menuItem("Launch at Login").isEnabled);
    EXPECT_FALSE(bench.menuItem("Launch at Login").hasCheckMark);
    choose("Launch at Login");
    ASSERT_EQ(bench.desktop.alerts.shown.size(), 1U);
    EXPECT_EQ(bench.desktop.alerts.shown.front().informativeText,
              "Launch at Login requires macOS 13 or later.");
    EXPECT_TRUE(bench.desktop.loginItem.enabled) << "nothing was changed";
}

} // namespace
} // namespace quillon
