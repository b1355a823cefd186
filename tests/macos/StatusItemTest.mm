#include "VisibleShell.h"

#include <gtest/gtest.h>

#include <objc/runtime.h>

namespace quillon {
namespace {

using namespace fakes;

constexpr NSEventMask bothMouseButtons = NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp;

class StatusItemTest : public testing::Test {
  protected:
    void expectSetUp(NSControl* control) const {
        const FakeControl& state = fakeControl(control);
        EXPECT_STREQ(sel_getName(state.action), "statusBarButtonPressed:");
        EXPECT_TRUE([state.target respondsToSelector:sel_registerName("statusBarButtonPressed:")]);
        EXPECT_EQ(state.sendsActionOn, bothMouseButtons);
        EXPECT_TRUE(state.isEnabled);
        EXPECT_FALSE(state.refusesFirstResponder);
    }

    VisibleShell shell;
};

TEST_F(StatusItemTest, IsSquareAndVisible) {
    shell.launch();
    ASSERT_EQ(fakeStatusBar().items.size(), 1U);
    EXPECT_EQ(fakeStatusItem(shell.item()).length, -2.0);
    EXPECT_TRUE(fakeStatusItem(shell.item()).isVisible);
    EXPECT_FALSE(fakeStatusItem(shell.item()).isRemoved);
}

TEST_F(StatusItemTest, IsRemovedWithItsLastHolder) {
    auto item = shell.statusBar.statusItem(30);
    EXPECT_EQ(fakeStatusItem(shell.item()).length, 30);
    item = nullptr;
    EXPECT_TRUE(fakeStatusItem(shell.item()).isRemoved);
}

TEST_F(StatusItemTest, TheSystemMayGiveNone) {
    fakeStatusBar().granting = false;
    EXPECT_EQ(shell.statusBar.statusItem(-2), nullptr);
}

TEST_F(StatusItemTest, TheSystemMayGiveNoButton) {
    fakeStatusBar().grantingButtons = false;
    EXPECT_EQ(shell.statusBar.statusItem(-2)->button(), nullptr);
}

TEST_F(StatusItemTest, ShowsTheLogo) {
    shell.launch();
    const FakeButton& button = fakeButton(shell.button());
    ASSERT_TRUE(button.image != nil);
    EXPECT_EQ(fakeImage(button.image).name, "MenuBarLogo");
    EXPECT_FALSE(fakeImage(button.image).isSymbol);
    EXPECT_TRUE(fakeImage(button.image).isTemplate);
    EXPECT_EQ(fakeImage(button.image).size.width, 20);
    EXPECT_EQ(fakeImage(button.image).size.height, 20);
    EXPECT_EQ(button.imageScaling, NSImageScaleProportionallyDown);
    EXPECT_EQ(button.imagePosition, NSImageOnly);
    EXPECT_EQ(utf8(button.title), "");
    EXPECT_EQ(utf8([button.attributedTitle string]), "");
    EXPECT_TRUE(button.contentTintColor == nil);
}

TEST_F(StatusItemTest, ShowsTheSymbolWhenThereIsNoLogo) {
    fakeImages().assets.clear();
    shell.launch();
    const FakeImage& image = fakeImage(fakeButton(shell.button()).image);
    EXPECT_TRUE(image.isSymbol);
    EXPECT_EQ(image.name, "wrench.and.screwdriver");
    EXPECT_EQ(image.accessibilityDescription, "Tools");
    EXPECT_TRUE(image.isTemplate);
    EXPECT_EQ(image.size.width, 18);
    EXPECT_EQ(image.size.height, 18);
}

TEST_F(StatusItemTest, ShowsATitleWhenThereIsNoPicture) {
    fakeImages().assets.clear();
    fakeImages().symbols.clear();
    shell.launch();
    const FakeButton& button = fakeButton(shell.button());
    EXPECT_EQ(utf8(button.title), "🔧");
    EXPECT_TRUE(button.image == nil);
    EXPECT_EQ(button.imagePosition, NSNoImage);
    const FakeFont& font = fakeFont([shell.button() font]);
    EXPECT_EQ(font.size, 14);
    EXPECT_EQ(font.weight, NSFontWeightMedium);
    EXPECT_FALSE(font.isMonospaced);
}

TEST_F(StatusItemTest, ItsPictureIsNotTheOneThatOthersGet) {
    shell.launch();
    EXPECT_FALSE(fakeImage([NSImage imageNamed:@"MenuBarLogo"]).isTemplate);
}

TEST_F(StatusItemTest, ItsButtonIsSetUp) {
    shell.launch();
    expectSetUp(shell.button());
    EXPECT_EQ(utf8([shell.button() toolTip]), "Open Quillon — Right-click for menu");
    EXPECT_EQ([shell.button() alignment], NSTextAlignmentCenter);
    EXPECT_EQ([[shell.button() cell] alignment], NSTextAlignmentCenter);
}

TEST_F(StatusItemTest, ItsButtonKeepsTheSystemsFrame) {
    shell.launch();
    EXPECT_FALSE(fakeButton(shell.button()).isBordered);
    EXPECT_EQ(fakeButton(shell.button()).bezelStyle, NSBezelStyleRounded);
    EXPECT_EQ([shell.button() focusRingType], NSFocusRingTypeDefault);
}

TEST_F(StatusItemTest, FollowsLaterChangesOfItsButton) {
    const auto item = shell.statusBar.statusItem(-2);
    const auto button = item->button();
    button->setEnabled(false);
    EXPECT_FALSE([shell.button() isEnabled]);
    button->setRefusesFirstResponder(true);
    EXPECT_TRUE([shell.button() refusesFirstResponder]);
    button->setSendsActionOn(eventMask(EventType::rightMouseUp));
    EXPECT_EQ(fakeControl(shell.button()).sendsActionOn, NSEventMaskRightMouseUp);
    button->setAlphaValue(0.25);
    EXPECT_EQ([shell.button() alphaValue], 0.25);
    int times = 0;
    const auto count = [&](Sender*) { ++times; };
    button->setAction({"one:", count});
    EXPECT_STREQ(sel_getName([shell.button() action]), "one:");
    button->setEnabled(true);
    EXPECT_TRUE(use(shell.button(), NSEventTypeRightMouseUp));
    EXPECT_EQ(times, 1);
}

TEST_F(StatusItemTest, MeasuresWhatTheSystemHasMade) {
    fakeStatusBar().buttonSize = {31, 24};
    const auto item = shell.statusBar.statusItem(-2);
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 31, 24}));
    fakeView(shell.button()).fittingSize = {28, 20};
    EXPECT_EQ(item->button()->fittingSize(), (Size{28, 20}));
    fakeWindow(fakeStatusItem(shell.item()).window).origin = {1200, 876};
    EXPECT_EQ(item->button()->onScreen(), (Rect{1200, 876, 31, 24}));
}

TEST_F(StatusItemTest, ItsCellIsOneOnlyWhenItIsAButtons) {
    const auto item = shell.statusBar.statusItem(-2);
    const auto button = item->button();
    EXPECT_NE(button->cell(), nullptr);
    [shell.button() setCell:[[NSActionCell alloc] init]];
    EXPECT_EQ(button->cell(), nullptr);
}

TEST_F(StatusItemTest, ThicknessIsTheSystems) {
    fakeStatusBar().thickness = 33;
    EXPECT_EQ(shell.statusBar.thickness(), 33);
}

TEST_F(StatusItemTest, LevelTakesTheButtonsPlaceInItsWidth) {
    shell.launch();
    shell.showLevel(42.5);
    ASSERT_TRUE(shell.container() != nil);
    EXPECT_TRUE(shell.button() == nil);
    EXPECT_EQ(fakeStatusItem(shell.item()).length, 24);
    for (NSView* view : {shell.container(), static_cast<NSView*>(shell.level())}) {
        EXPECT_EQ([view frame].origin.x, 0);
        EXPECT_EQ([view frame].origin.y, 0);
        EXPECT_EQ([view frame].size.width, 24);
        EXPECT_EQ([view frame].size.height, 22);
    }
    EXPECT_FALSE([shell.container() isKindOfClass:[NSButton class]]);
    expectSetUp(shell.level());
    EXPECT_EQ(utf8([shell.level() toolTip]), "Volume 42.5");
}

TEST_F(StatusItemTest, LevelIsABareButton) {
    shell.launch();
    shell.showLevel(10);
    const FakeButton& button = fakeButton(shell.level());
    EXPECT_FALSE(button.isBordered);
    EXPECT_EQ(button.bezelStyle, NSBezelStyleShadowlessSquare);
    EXPECT_EQ([shell.level() focusRingType], NSFocusRingTypeNone);
    EXPECT_EQ(utf8(button.title), "");
    EXPECT_TRUE(button.image == nil);
}

TEST_F(StatusItemTest, LevelDrawsItsTwoParts) {
    shell.launch();
    shell.showLevel(42.5);
    [shell.level() drawRect:[shell.level() bounds]];
    ASSERT_EQ(drawnTexts().size(), 2U);
    EXPECT_EQ(drawnTexts()[0].text, "42");
    EXPECT_EQ(drawnTexts()[1].text, ".5");
    for (const DrawnText& drawn : drawnTexts()) {
        EXPECT_EQ(drawn.color.name, "labelColor");
        EXPECT_EQ(drawn.color.alpha, 0.95);
        EXPECT_TRUE(drawn.font.isMonospaced);
        EXPECT_EQ(drawn.font.weight, NSFontWeightSemibold);
    }
    // 2 × 6.6 + 2 × 3.432 wide, in 24 × 22.
    EXPECT_EQ(drawnTexts()[0].font.size, 11);
    EXPECT_EQ(drawnTexts()[1].font.size, 11 * 0.52);
    EXPECT_EQ(drawnTexts()[0].rect.origin.x, 1);
    EXPECT_EQ(drawnTexts()[0].rect.origin.y, 5);
    EXPECT_EQ(drawnTexts()[0].rect.size.width, 14);
    EXPECT_EQ(drawnTexts()[1].rect.origin.x, 15);
    EXPECT_EQ(drawnTexts()[1].rect.origin.y, 7);
}

TEST_F(StatusItemTest, LevelIsDrawnAgainOnlyForAChangeThatIsSeen) {
    shell.launch();
    shell.showLevel(42.5);
    shell.pass(0.3);
    const int before = fakeView(shell.level()).timesMarked;
    shell.showLevel(42.6F);
    shell.pass(0.1);
    EXPECT_EQ(fakeView(shell.level()).timesMarked, before);
    EXPECT_EQ(utf8([shell.level() toolTip]), "Volume 42.6");
    shell.showLevel(44);
    EXPECT_EQ(fakeView(shell.level()).timesMarked, before + 1);
}

TEST_F(StatusItemTest, AClickOnTheLevelBringsTheButtonBack) {
    shell.launch();
    shell.showLevel(42.5);
    EXPECT_TRUE(shell.use(shell.level(), NSEventTypeLeftMouseUp));
    EXPECT_TRUE(shell.container() == nil);
    ASSERT_TRUE(shell.button() != nil);
    expectSetUp(shell.button());
    EXPECT_EQ(fakeImage(fakeButton(shell.button()).image).name, "MenuBarLogo");
    EXPECT_EQ([shell.button() alphaValue], 1);
    EXPECT_EQ(fakeStatusItem(shell.item()).length, 24);
    EXPECT_TRUE(fakePopover(shell.popover()).isShown);
    EXPECT_TRUE(fakePopover(shell.popover()).view == shell.button());
}

TEST_F(StatusItemTest, AViewThatWasTakenAwayDrawsNothingAnyMore) {
    const auto item = shell.statusBar.statusItem(-2);
    const auto view = std::make_shared<View>();
    const auto bar = std::make_shared<VolumeBarMenuBarButton>();
    view->addSubview(bar);
    item->setCustomView(view);
    NSButton* const level = shell.level();
    [level drawRect:[level bounds]];
    EXPECT_EQ(drawnTexts().size(), 2U);
    item->setCustomView(nullptr);
    [level drawRect:[level bounds]];
    EXPECT_EQ(drawnTexts().size(), 2U);
    EXPECT_FALSE(view->isInWindow());
}

TEST_F(StatusItemTest, AButtonThatWasTakenAwayDoesNothingAnyMore) {
    shell.launch();
    shell.showLevel(42.5);
    NSButton* const level = shell.level();
    shell.use(level, NSEventTypeLeftMouseUp);
    shell.lines.clear();
    shell.use(level, NSEventTypeLeftMouseUp);
    EXPECT_TRUE(shell.lines.empty());
}

} // namespace
} // namespace quillon
