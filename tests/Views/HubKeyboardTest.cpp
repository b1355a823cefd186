#include "support/ScreenFixture.h"

namespace quillon {
namespace {

/// Where the keys go while the hub changes.
struct HubKeyboard : ScreenFixture {
    void focus(QQuickItem* item) {
        ASSERT_NE(item, nullptr);
        item->forceActiveFocus(Qt::TabFocusReason);
        settle();
    }
    [[nodiscard]] double scrolled() const {
        return item([](const QQuickItem& each) { return each.inherits("QQuickFlickable"); })
            ->property("contentY")
            .toDouble();
    }
};

TEST_F(HubKeyboard, TheListScrollsByKeysFromTheStart) {
    key(Qt::Key_Down);
    EXPECT_EQ(scrolled(), 40);
    key(Qt::Key_PageDown);
    EXPECT_GT(scrolled(), 200);
    key(Qt::Key_Home);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(HubKeyboard, AHeldKeyPressesOnce) {
    focus(button("Power", card("Window+")));
    for (const bool isRepeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, {}, " ", isRepeated);
        QCoreApplication::sendEvent(&view, &press);
        EXPECT_FALSE(simulated.store->isEnabled(windowTool));
    }
}

TEST_F(HubKeyboard, WhatIsFoldedAwayHasNoKeys) {
    focus(button("Power", card("Window+")));
    click(button("Installed"));
    EXPECT_EQ(view.activeFocusItem(), button("Installed"));
    key(Qt::Key_Space);
    EXPECT_TRUE(simulated.store->isEnabled(windowTool));
}

TEST_F(HubKeyboard, WhatHasTheKeysStaysInSightAsTheListGrows) {
    click(button("Installed"));
    draw();
    QQuickItem* const header = button("Marketplace");
    focus(header);
    EXPECT_EQ(scrolled(), 0);
    QMetaObject::invokeMethod(button("Installed"), "press");
    draw();
    ASSERT_EQ(view.activeFocusItem(), header);
    EXPECT_GT(scrolled(), 0);
    EXPECT_LE(header->mapToScene({0, header->height()}).y(), view.height());

    key(Qt::Key_Home);
    click(button("Installed")); // which is where the keys are now
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(HubKeyboard, AListThatSomebodyHasScrolledStaysThere) {
    focus(button("Marketplace"));
    key(Qt::Key_Home);
    simulated.store->uninstall(mediaTool);
    draw();
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(HubKeyboard, BackToWhereTheToolWasOpened) {
    QQuickItem* customize = button("Customize", card("Desktop+"));
    focus(customize);
    key(Qt::Key_Return);
    EXPECT_NE(view.activeFocusItem(), customize);
    QMetaObject::invokeMethod(&root(), "goBack");
    settle();
    EXPECT_EQ(view.activeFocusItem(), customize);
}

TEST_F(HubKeyboard, RemovedToolsLeaveTheKeysAtTheirSection) {
    focus(button("Remove", card("Window+")));
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_FALSE(simulated.store->isInstalled(windowTool));
    EXPECT_EQ(view.activeFocusItem(), button("Installed"));

    focus(button("Remove", card("Media+")));
    key(Qt::Key_Return);
    simulated.store->uninstall(mediaTool);
    settle();
    EXPECT_EQ(view.activeFocusItem(), button("Installed")) << "somebody else answered";
}

TEST_F(HubKeyboard, InstallingLeavesTheKeysAtTheSection) {
    simulated.store->uninstall(mediaTool);
    settle();
    focus(button("Install", card("Media+")));
    key(Qt::Key_Return);
    EXPECT_EQ(view.activeFocusItem(), button("Marketplace"));
    simulated.pass(1);
    settle();
    EXPECT_TRUE(simulated.store->isInstalled(mediaTool));
    EXPECT_EQ(view.activeFocusItem(), button("Marketplace"));
}

TEST_F(HubKeyboard, TheBannerThatHasGoneHasNoKeys) {
    simulated.trust(false);
    settle();
    focus(button("Open System Settings"));
    simulated.trust(true);
    settle();
    key(Qt::Key_Space);
    EXPECT_TRUE(simulated.took("open").empty());
}

} // namespace
} // namespace quillon
