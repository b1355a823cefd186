#include "FakeInstallation.h"
#include "Platform/MacOS/MacLoginItem.h"
#include "VisibleShell.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using namespace fakes;

class MenusTest : public testing::Test {
  protected:
    MenusTest() { shell.launch(); }

    void rightClick() { shell.use(shell.button(), NSEventTypeRightMouseUp); }

    VisibleShell shell;
};

TEST_F(MenusTest, ARightClickShowsItForTheEvent) {
    NSEvent* event = nil;
    fakeMenus().whileShown = [&] { event = fakeApplication().currentEvent; };
    rightClick();
    EXPECT_EQ(fakeMenus().timesShown, 1);
    EXPECT_TRUE(fakeMenus().isContextMenu);
    EXPECT_TRUE(event != nil);
    EXPECT_TRUE(fakeMenus().event == event);
    EXPECT_TRUE(fakeMenus().view == shell.button());
    EXPECT_FALSE(fakePopover(shell.popover()).isShown);
}

TEST_F(MenusTest, WithoutEventItHangsOnTheButton) {
    shell.delegate->showContextMenu();
    EXPECT_EQ(fakeMenus().timesShown, 1);
    EXPECT_FALSE(fakeMenus().isContextMenu);
    EXPECT_TRUE(fakeMenus().positioned == nil);
    EXPECT_EQ(fakeMenus().location.x, 0);
    EXPECT_EQ(fakeMenus().location.y, 22);
    EXPECT_TRUE(fakeMenus().view == shell.button());
}

TEST_F(MenusTest, ItsItems) {
    struct Row {
        std::string title;
        std::string action;
        std::string key;
    };
    const std::vector<Row> rows{{"Check for Updates...", "checkForUpdates:", ""},
                                {"Launch at Login", "toggleLaunchAtLogin:", ""},
                                {"Support", "openSupport", ""},
                                {},
                                {"Quit", "quitFromStatusMenu:", "q"}};
    rightClick();
    ASSERT_EQ(fakeMenu(fakeMenus().shown).items.size(), rows.size());
    EXPECT_FALSE([fakeMenus().shown autoenablesItems]);
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const FakeMenuItem& item = fakeMenuItem(shell.menuItem(index));
        EXPECT_EQ(item.isSeparator, rows[index].title.empty());
        if (item.isSeparator) {
            continue;
        }
        EXPECT_EQ(utf8(item.title), rows[index].title);
        EXPECT_STREQ(sel_getName(item.action), rows[index].action.c_str());
        EXPECT_TRUE([item.target respondsToSelector:item.action]);
        EXPECT_EQ(utf8(item.keyEquivalent), rows[index].key);
        EXPECT_TRUE(item.isEnabled);
        EXPECT_TRUE(item.image == nil);
        EXPECT_EQ(item.timesImageSet, 1);
        EXPECT_EQ(item.modifiers, NSEventModifierFlagCommand);
        EXPECT_EQ(item.timesModifiersSet, rows[index].key.empty() ? 0 : 1);
    }
}

TEST_F(MenusTest, ChecksTheLoginItemWhenItIsEnabled) {
    shell.desktop.loginItem.enabled = true;
    rightClick();
    EXPECT_EQ([shell.menuItem(1) state], NSControlStateValueOn);
    EXPECT_TRUE(choose(shell.menuItem(1)));
    EXPECT_FALSE(shell.desktop.loginItem.enabled);
    EXPECT_EQ([shell.menuItem(1) state], NSControlStateValueOff);
}

TEST_F(MenusTest, WhereThereIsNoLoginItemItCannotBeChosen) {
    shell.desktop.loginItem.supported = false;
    rightClick();
    EXPECT_FALSE([shell.menuItem(1) isEnabled]);
    EXPECT_FALSE(choose(shell.menuItem(1)));
}

// Not of the fixture, whose shell has a login item.
TEST(MenusBeforeMacOS13Test, LaunchAtLoginCannotBeChosen) {
    fakeInstallation().reset();
    MissingLoginItem missing;
    EXPECT_FALSE(missing.isSupported());
    EXPECT_FALSE(missing.isEnabled());
    VisibleShell shell(&missing);
    shell.launch();
    shell.use(shell.button(), NSEventTypeRightMouseUp);
    EXPECT_EQ(utf8(fakeMenuItem(shell.menuItem(1)).title), "Launch at Login");
    EXPECT_FALSE([shell.menuItem(1) isEnabled]);
    EXPECT_EQ([shell.menuItem(1) state], NSControlStateValueOff);
    EXPECT_FALSE(choose(shell.menuItem(1)));
    const std::string reason = "Launch at Login requires macOS 13 or later.";
    EXPECT_EQ(missing.registerService(), reason);
    EXPECT_EQ(missing.unregisterService(), reason);
    EXPECT_TRUE(fakeInstallation().loginItemCalls.empty());
}

TEST_F(MenusTest, AChosenItemPerformsItsAction) {
    shell.desktop.bundle.info["SupportURL"] = "https://example.org/contact";
    rightClick();
    shell.lines.clear();
    EXPECT_TRUE(choose(shell.menuItem(2)));
    EXPECT_EQ(shell.lines, std::vector<std::string>{"open https://example.org/contact"});
    shell.lines.clear();
    EXPECT_TRUE(choose(shell.menuItem(0)));
    EXPECT_EQ(shell.lines, std::vector<std::string>{"updates check sender"});
}

TEST_F(MenusTest, QuitPassesItsItemOn) {
    rightClick();
    EXPECT_TRUE(choose(shell.menuItem(4)));
    ASSERT_EQ(fakeApplication().terminations.size(), 1U);
    EXPECT_TRUE(fakeApplication().terminations[0] == shell.menuItem(4));
}

TEST_F(MenusTest, OfAViewThatIsNotShownThereIsNone) {
    const auto menu = std::make_shared<Menu>();
    const View view;
    shell.menus.popUp(menu, {0, 0}, view);
    shell.menus.popUpContextMenu(menu, EventType::rightMouseUp, view);
    EXPECT_EQ(fakeMenus().timesShown, 0);
}

TEST_F(MenusTest, AMenuThatIsGoneDoesNothing) {
    rightClick();
    NSMenuItem* const quit = shell.menuItem(4);
    rightClick();
    choose(quit);
    EXPECT_TRUE(fakeApplication().terminations.empty());
}

} // namespace
} // namespace quillon
