#include "Platform/Linux/windows/WidgetMenus.h"

#include "WindowsFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

constexpr xcb_keysym_t downKey = 0xFF54;
constexpr xcb_keysym_t controlKey = 0xFFE3;

struct MenuDesktop : WindowsFixture {
    MenuDesktop() {
        add("Grey")->isEnabled = false;
        add("First & foremost")->hasCheckMark = true;
        add("-")->isSeparator = true;
        add("Quit")->keyEquivalent = "q";
    }

    std::shared_ptr<MenuItem> add(const std::string& title) {
        auto item = std::make_shared<MenuItem>();
        item->title = title;
        item->action.perform = [this, raw = item.get()](Sender* sender) {
            EXPECT_EQ(sender, raw);
            chosen.push_back(raw->title);
            openAtChoice = menus.open() != nullptr;
            pointerFreeAtChoice = canGrabPointer();
        };
        menu->items.push_back(item);
        return item;
    }

    [[nodiscard]] bool canGrabPointer() const {
        const XcbOwned<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
            other->get(),
            xcb_grab_pointer(other->get(), 0, other->root(), 0, XCB_GRAB_MODE_ASYNC,
                             XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
            nullptr));
        xcb_ungrab_pointer(other->get(), XCB_CURRENT_TIME);
        other->sync();
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

    [[nodiscard]] bool popUp() {
        menus.popUp(menu, {0, 0}, anchor);
        return waitUntil([&] { return isOpen(); });
    }

    /// Shown, and holding pointer and keyboard.
    [[nodiscard]] bool isOpen() const {
        return menus.open() != nullptr &&
               isMapped(static_cast<xcb_window_t>(menus.open()->winId())) && !canGrabPointer();
    }

    [[nodiscard]] bool choosesOne() const {
        return waitUntil([&] { return !chosen.empty(); });
    }

    [[nodiscard]] bool closes() const {
        return waitUntil([&] { return menus.open() == nullptr && canGrabPointer(); });
    }

    AnchorView anchor{Rect{600, 776, 24, 24}};
    WidgetMenus menus{displays};
    std::shared_ptr<Menu> menu = std::make_shared<Menu>();
    std::vector<std::string> chosen;
    bool openAtChoice = false;
    bool pointerFreeAtChoice = false;
};

TEST(WidgetMenus, ByArrowsAndEnterThoughNoWindowHasTheKeyboard) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    desktop.press(downKey); // over the disabled item
    desktop.press(downKey); // over the separator
    desktop.press(returnKey);
    ASSERT_TRUE(desktop.choosesOne());
    EXPECT_EQ(desktop.chosen, (std::vector<std::string>{"Quit"}));
    EXPECT_FALSE(desktop.openAtChoice);
    EXPECT_TRUE(desktop.pointerFreeAtChoice);
}

TEST(WidgetMenus, ByTheKeyEquivalentOnce) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    desktop.press('q', controlKey);
    ASSERT_TRUE(desktop.choosesOne());
    EXPECT_TRUE(desktop.closes());
    EXPECT_EQ(desktop.chosen, (std::vector<std::string>{"Quit"}));
    EXPECT_FALSE(desktop.openAtChoice);
}

TEST(WidgetMenus, TheKeyAloneIsNoKeyEquivalent) {
    MenuDesktop desktop;
    desktop.menu->items.back()->title = "End"; // or its first letter would choose it
    ASSERT_TRUE(desktop.popUp());
    desktop.press('q');
    desktop.press(escapeKey);
    EXPECT_TRUE(desktop.closes());
    EXPECT_TRUE(desktop.chosen.empty());
}

TEST(WidgetMenus, TheKeyEquivalentOfADisabledItemDoesNothing) {
    MenuDesktop desktop;
    desktop.menu->items.back()->isEnabled = false;
    ASSERT_TRUE(desktop.popUp());
    desktop.press('q', controlKey);
    desktop.press(escapeKey);
    EXPECT_TRUE(desktop.closes());
    EXPECT_TRUE(desktop.chosen.empty());
}

TEST(WidgetMenus, EscapeClosesIt) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    desktop.press(escapeKey);
    EXPECT_TRUE(desktop.closes());
    EXPECT_TRUE(desktop.chosen.empty());
}

TEST(WidgetMenus, ByAClick) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    MenuWidget& open = *desktop.menus.open();
    const QPoint item = open.mapToGlobal(open.actionGeometry(open.actions().at(1)).center());
    desktop.click(item.x(), item.y());
    ASSERT_TRUE(desktop.choosesOne());
    EXPECT_EQ(desktop.chosen, (std::vector<std::string>{"First & foremost"}));
}

TEST(WidgetMenus, AClickElsewhereClosesIt) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    desktop.click(20, 700);
    EXPECT_TRUE(desktop.closes());
    EXPECT_TRUE(desktop.chosen.empty());
}

TEST(WidgetMenus, LooksAsItIsTold) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    const auto actions = desktop.menus.open()->actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_FALSE(actions.at(0)->isEnabled());
    EXPECT_EQ(actions.at(1)->text(), "First && foremost");
    EXPECT_TRUE(actions.at(1)->isChecked());
    EXPECT_FALSE(actions.at(3)->isCheckable());
    EXPECT_TRUE(actions.at(2)->isSeparator());
    EXPECT_EQ(actions.at(3)->shortcut().toString(), "Ctrl+Q");
    EXPECT_EQ(desktop.menus.open()->activeAction(), nullptr);
}

TEST(WidgetMenus, BelowTheViewOrAboveIt) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    EXPECT_EQ(desktop.menus.open()->pos(), QPoint(600, 24));
    desktop.anchor.place = Rect{600, 0, 24, 24};
    ASSERT_TRUE(desktop.popUp());
    EXPECT_EQ(desktop.menus.open()->geometry().bottomLeft(), QPoint(600, 775));
}

TEST(WidgetMenus, AContextMenuAtThePointer) {
    MenuDesktop desktop;
    desktop.movePointer(300, 200);
    desktop.menus.popUpContextMenu(desktop.menu, EventType::rightMouseUp, desktop.anchor);
    ASSERT_TRUE(waitUntil([&] { return desktop.isOpen(); }));
    EXPECT_EQ(desktop.menus.open()->pos(), QPoint(301, 201));
}

TEST(WidgetMenus, ASecondOneClosesTheFirst) {
    MenuDesktop desktop;
    ASSERT_TRUE(desktop.popUp());
    const auto first = static_cast<xcb_window_t>(desktop.menus.open()->winId());
    desktop.anchor.place = Rect{100, 776, 24, 24};
    ASSERT_TRUE(desktop.popUp());
    EXPECT_TRUE(waitUntil([&] { return !desktop.isMapped(first); }));
    EXPECT_EQ(desktop.menus.open()->pos(), QPoint(100, 24));
    desktop.press(escapeKey);
    EXPECT_TRUE(desktop.closes());
}

TEST(WidgetMenus, WaitsForTheButtonThatIsHeldOnAnotherClient) {
    MenuDesktop desktop;
    (void)desktop.openOtherWindow();
    desktop.movePointer(100, 100);
    desktop.button(XCB_BUTTON_PRESS, 3);
    desktop.menus.popUp(desktop.menu, {0, 0}, desktop.anchor);
    QCoreApplication::processEvents();
    ASSERT_NE(desktop.menus.open(), nullptr);
    EXPECT_FALSE(desktop.menus.open()->isVisible());
    desktop.button(XCB_BUTTON_RELEASE, 3);
    ASSERT_TRUE(waitUntil([&] { return desktop.isOpen(); }));
    desktop.press(escapeKey);
    EXPECT_TRUE(desktop.closes());
}

TEST(WidgetMenus, AnActionMayReplaceItselfAndOpenAnother) {
    MenuDesktop desktop;
    auto& last = *desktop.menu->items.back();
    int opened = 0;
    last.action.perform = [&](Sender*) {
        last.action.perform = nullptr;
        desktop.menus.popUp(desktop.menu, {0, 0}, desktop.anchor);
        ++opened;
    };
    ASSERT_TRUE(desktop.popUp());
    desktop.press('q', controlKey);
    ASSERT_TRUE(waitUntil([&] { return opened == 1 && desktop.isOpen(); }));
    desktop.press('q', controlKey);
    EXPECT_TRUE(desktop.closes());
    EXPECT_EQ(opened, 1);
}

} // namespace
} // namespace quillon
