#include "VisibleShell.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using namespace fakes;

class PopoversTest : public testing::Test {
  protected:
    PopoversTest() { shell.launch(); }

    [[nodiscard]] FakePopover& state() const { return fakePopover(shell.popover()); }
    void click() { shell.use(shell.button(), NSEventTypeLeftMouseUp); }

    VisibleShell shell;
};

TEST_F(PopoversTest, ClosesOnlyWhenItIsAskedTo) {
    EXPECT_EQ(fakePopovers().size(), 1U);
    EXPECT_EQ(state().behavior, NSPopoverBehaviorApplicationDefined);
    EXPECT_TRUE(state().animates);
    EXPECT_FALSE(state().isShown);
}

TEST_F(PopoversTest, EachBehaviorIsTheSystems) {
    const auto popover = shell.popovers.make("ContentView", {});
    popover->setBehavior(PopoverBehavior::transient);
    EXPECT_EQ(state().behavior, NSPopoverBehaviorTransient);
    popover->setBehavior(PopoverBehavior::semitransient);
    EXPECT_EQ(state().behavior, NSPopoverBehaviorSemitransient);
    popover->setBehavior(PopoverBehavior::applicationDefined);
    EXPECT_EQ(state().behavior, NSPopoverBehaviorApplicationDefined);
}

TEST_F(PopoversTest, HangsOnTheLowerEdgeOfTheButton) {
    click();
    EXPECT_TRUE(state().isShown);
    EXPECT_TRUE(state().view == shell.button());
    EXPECT_EQ(state().rect.origin.x, 0);
    EXPECT_EQ(state().rect.origin.y, 0);
    EXPECT_EQ(state().rect.size.width, 24);
    EXPECT_EQ(state().rect.size.height, 22);
    EXPECT_EQ(state().edge, NSRectEdgeMinY);
}

TEST_F(PopoversTest, EachEdgeIsTheSystems) {
    const auto popover = shell.popovers.make("ContentView", {});
    const auto item = shell.statusBar.statusItem(-2);
    const auto edgeFor = [&](RectEdge edge) {
        popover->show(*item->button(), edge);
        return state().edge;
    };
    EXPECT_EQ(edgeFor(RectEdge::minX), NSRectEdgeMinX);
    EXPECT_EQ(edgeFor(RectEdge::minY), NSRectEdgeMinY);
    EXPECT_EQ(edgeFor(RectEdge::maxX), NSRectEdgeMaxX);
    EXPECT_EQ(edgeFor(RectEdge::maxY), NSRectEdgeMaxY);
}

TEST_F(PopoversTest, HasTheKeyboard) {
    click();
    ASSERT_TRUE(state().window != nil);
    EXPECT_EQ(fakeWindow(state().window).timesMadeKey, 1);
    EXPECT_TRUE(fakeWindow(state().window).firstResponder == shell.content.view);
}

TEST_F(PopoversTest, ASecondClickAsksItToClose) {
    click();
    click();
    EXPECT_FALSE(state().isShown);
    EXPECT_EQ(state().timesAskedToClose, 1);
}

TEST_F(PopoversTest, ItsContentIsMadeOnceAndKept) {
    EXPECT_EQ(shell.content.timesMade, 1); // when the program was first idle
    EXPECT_EQ(shell.content.screen, "ContentView");
    NSView* const view = shell.content.view;
    EXPECT_FALSE(shell.content.isVisible);
    click();
    EXPECT_TRUE(shell.content.isVisible);
    EXPECT_TRUE([view superview] == [state().controller view]);
    EXPECT_TRUE([view window] == state().window);
    click();
    EXPECT_FALSE(shell.content.isVisible);
    click();
    EXPECT_EQ(shell.content.timesMade, 1);
    EXPECT_TRUE([view window] == state().window);
}

TEST_F(PopoversTest, ItsContentIsMadeWhenItIsShownBeforeTheProgramIsIdle) {
    const auto popover = shell.popovers.make("ToolView", {});
    const auto item = shell.statusBar.statusItem(-2);
    popover->show(*item->button(), RectEdge::minY);
    EXPECT_EQ(shell.content.timesMade, 2);
    shell.desktop.runLoop.drain();
    EXPECT_EQ(shell.content.timesMade, 2);
}

TEST_F(PopoversTest, WhatIsGoneMakesNoContent) {
    shell.popovers.make("ToolView", {});
    shell.desktop.runLoop.drain();
    EXPECT_EQ(shell.content.timesMade, 1);
}

TEST_F(PopoversTest, IsAsLargeAsItsContent) {
    EXPECT_EQ(state().contentSize.width, 360);
    EXPECT_EQ(state().contentSize.height, 480);
    shell.content.size = {360, 520};
    shell.content.handlers.resized();
    EXPECT_EQ(state().contentSize.height, 520);
    EXPECT_EQ([shell.content.view frame].size.height, 520);
    EXPECT_EQ([shell.content.view autoresizingMask], NSViewWidthSizable | NSViewHeightSizable);
}

TEST_F(PopoversTest, EscapeClosesIt) {
    click();
    shell.content.handlers.escaped();
    EXPECT_FALSE(state().isShown);
}

TEST_F(PopoversTest, ASheetOfTheContentKeepsItOpen) {
    click();
    shell.pass(0.5);
    shell.content.hasSheet = true;
    shell.desktop.displays.pointer = {300, 300};
    shell.desktop.monitors.deliver(EventType::leftMouseDown);
    shell.desktop.runLoop.drain();
    EXPECT_TRUE(state().isShown);
    shell.content.hasSheet = false;
    shell.desktop.monitors.deliver(EventType::leftMouseDown);
    shell.desktop.runLoop.drain();
    EXPECT_FALSE(state().isShown);
}

TEST_F(PopoversTest, SoDoesASheetOfItsWindow) {
    const auto popover = shell.popovers.make("ContentView", {});
    const auto item = shell.statusBar.statusItem(-2);
    popover->show(*item->button(), RectEdge::minY);
    EXPECT_FALSE(popover->hasAttachedSheet());
    fakeWindow(state().window).sheets.push_back([[NSWindow alloc] init]);
    EXPECT_TRUE(popover->hasAttachedSheet());
}

TEST_F(PopoversTest, OnWhatIsInNoWindowNothingHangs) {
    const auto popover = shell.popovers.make("ContentView", {});
    const View view;
    popover->show(view, RectEdge::minY);
    EXPECT_FALSE(popover->isShown());
    EXPECT_EQ(state().timesShown, 0);
}

TEST_F(PopoversTest, ItIsClosedWhenItGoes) {
    auto popover = shell.popovers.make("ContentView", {});
    const auto item = shell.statusBar.statusItem(-2);
    popover->show(*item->button(), RectEdge::minY);
    popover = nullptr;
    EXPECT_FALSE(state().isShown);
    shell.content.isVisible = true;
    [state().delegate popoverDidClose:nil]; // an animation may end later than that
    EXPECT_TRUE(shell.content.isVisible);
}

} // namespace
} // namespace quillon
