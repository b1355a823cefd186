#include "support/ShellBench.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon {
namespace {

using testing::ElementsAre;

constexpr Point elsewhere{300, 300};
constexpr Point inTheItem{1005, 885};
constexpr const char* clicked = "log 👆 Status bar item clicked!";
constexpr const char* opened = "log ✅ Popover opened";
constexpr const char* closed = "log ✖️ Popover closed";

class AppDelegateTest : public testing::Test {
  protected:
    void launch() {
        bench.launch();
        bench.take();
    }
    void open() {
        bench.click(bench.button());
        ASSERT_TRUE(bench.desktop.popovers.shown);
        bench.take();
    }
    static void expectSetUp(SimulatedStatusButton& button) {
        EXPECT_EQ(button.action().name, "statusBarButtonPressed:");
        EXPECT_EQ(button.toolTip(), "Open Quillon — Right-click for menu");
        EXPECT_EQ(button.sendsActionOn(),
                  eventMask(EventType::leftMouseUp) | eventMask(EventType::rightMouseUp));
        EXPECT_TRUE(button.isEnabled());
        EXPECT_FALSE(button.refusesFirstResponder());
        EXPECT_EQ(button.look().alignment, TextAlignment::center);
        EXPECT_EQ(button.buttonCell.alignment, TextAlignment::center);
    }
    [[nodiscard]] bool isOpen() const { return bench.desktop.popovers.shown; }

    ShellBench bench;
};

TEST_F(AppDelegateTest, LaunchesInOrder) {
    bench.launch();
    EXPECT_THAT(bench.take(),
                ElementsAre("log 🚀 App launched!", "policy accessory",
                            "log 📍 Creating status bar item...", "status show",
                            "log ✅ Status bar item created and set to visible",
                            "log ✅ Icon set successfully", "popover make ContentView",
                            "popover application-defined", "updates start", "hub start",
                            "log ✅ Setup complete! Look for the icon in your menu bar."));
    EXPECT_EQ(bench.item().length, squareStatusItemLength);
    EXPECT_EQ(bench.desktop.monitors.count(), 1U);
}

TEST_F(AppDelegateTest, WithoutStatusItemNothingElseIsSetUp) {
    bench.desktop.statusBar.granting = false;
    bench.launch();
    EXPECT_THAT(bench.take(), ElementsAre("log 🚀 App launched!", "policy accessory",
                                          "log 📍 Creating status bar item...",
                                          "log ❌ Failed to create status bar item!"));
    EXPECT_EQ(bench.desktop.monitors.count(), 0U);
    bench.delegate->togglePopover(nullptr);
    bench.delegate->applicationDidBecomeActive();
    bench.delegate->applicationShouldHandleReopen();
    bench.delegate->showContextMenu();
    bench.showLevel(50);
    EXPECT_THAT(bench.take(), ElementsAre(clicked));
}

TEST_F(AppDelegateTest, WithoutButtonNothingElseIsSetUp) {
    bench.desktop.statusBar.grantingButtons = false;
    bench.launch();
    EXPECT_THAT(bench.take(), ElementsAre("log 🚀 App launched!", "policy accessory",
                                          "log 📍 Creating status bar item...", "status show",
                                          "log ✅ Status bar item created and set to visible",
                                          "log ❌ Failed to get status bar button!"));
    EXPECT_EQ(bench.desktop.monitors.count(), 0U);
    bench.delegate->togglePopover(nullptr);
    bench.showLevel(50);
    EXPECT_THAT(bench.take(), ElementsAre(clicked));
}

TEST_F(AppDelegateTest, ButtonIsSetUp) {
    launch();
    expectSetUp(bench.button());
}

TEST_F(AppDelegateTest, ButtonWithoutCell) {
    launch();
    bench.button().hasCell = false;
    bench.button().buttonCell.alignment = TextAlignment::left;
    bench.delegate->applicationDidBecomeActive();
    EXPECT_EQ(bench.button().look().alignment, TextAlignment::center);
    EXPECT_EQ(bench.button().buttonCell.alignment, TextAlignment::left);
}

TEST_F(AppDelegateTest, IconIsTheLogoAsATemplate) {
    launch();
    const ButtonLook& look = bench.button().look();
    EXPECT_EQ(look.image, (Image{"MenuBarLogo", "", {20, 20}, false, true}));
    EXPECT_EQ(look.imageScaling, ImageScaling::proportionallyDown);
    EXPECT_EQ(look.imagePosition, ImagePosition::imageOnly);
    EXPECT_TRUE(look.title.empty());
}

TEST_F(AppDelegateTest, IconIsASymbolWithoutTheLogo) {
    bench.desktop.images.hasAssets = false;
    launch();
    const ButtonLook& look = bench.button().look();
    EXPECT_EQ(look.image, (Image{"wrench.and.screwdriver", "Tools", {18, 18}, true, true}));
    EXPECT_EQ(look.imagePosition, ImagePosition::imageOnly);
}

TEST_F(AppDelegateTest, IconIsATitleWithoutAnyImage) {
    bench.desktop.images.hasAssets = false;
    bench.desktop.images.hasSymbols = false;
    launch();
    const ButtonLook& look = bench.button().look();
    EXPECT_EQ(look.title, "🔧");
    EXPECT_EQ(look.titleFont, (Font{14, FontWeight::medium, false}));
    EXPECT_FALSE(look.image);
    EXPECT_EQ(look.imagePosition, ImagePosition::noImage);
}

TEST_F(AppDelegateTest, IconClearsWhatTheButtonShowedBefore) {
    launch();
    ButtonLook look = bench.button().look();
    look.title = "old";
    look.attributedTitle = "old";
    look.contentTintColor = "red";
    bench.button().setLook(look);
    bench.showLevel(50);
    bench.click(*bench.level());
    EXPECT_TRUE(bench.button().look().title.empty());
    EXPECT_TRUE(bench.button().look().attributedTitle.empty());
    EXPECT_FALSE(bench.button().look().contentTintColor);
}

TEST_F(AppDelegateTest, LeftClickOpensAndLeftClickCloses) {
    launch();
    bench.click(bench.button());
    EXPECT_THAT(bench.take(), ElementsAre(clicked, "popover show below", "popover key", opened));
    EXPECT_EQ(bench.desktop.popovers.anchor, &bench.button());
    bench.click(bench.button());
    EXPECT_THAT(bench.take(), ElementsAre(clicked, "popover close", closed));
}

TEST_F(AppDelegateTest, TheClickThatOpenedIsNoClickOutside) {
    launch();
    // The window of time, not the place: the item may have moved away under the pointer.
    open();
    bench.pass(0.34);
    bench.pressAt(elsewhere);
    EXPECT_TRUE(isOpen());
    bench.pass(0.01);
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(bench.take(), ElementsAre("popover close")) << "it is not the toggle that closed";
}

TEST_F(AppDelegateTest, TheClickThatClosedFindsItClosed) {
    launch();
    open();
    bench.click(bench.button());
    bench.take();
    bench.pressAt(elsewhere);
    EXPECT_TRUE(bench.take().empty());
    // It has also cleared the time within which clicks do not count.
    bench.click(bench.button());
    bench.click(bench.button());
    bench.desktop.popovers.shown = true;
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, AClockSetBackDoesNotKeepItOpen) {
    launch();
    open();
    bench.pass(1);
    bench.desktop.runLoop.stepClock(-3600);
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, TheMonitorOfTheOutsideAsksForPressesOfTwoButtons) {
    launch();
    open();
    EXPECT_EQ(bench.desktop.monitors.mask(""), 1U << 1 | 1U << 3);
}

TEST_F(AppDelegateTest, EitherButtonOutsideCloses) {
    launch();
    for (const auto down : {EventType::leftMouseDown, EventType::rightMouseDown}) {
        open();
        bench.pass(0.35);
        bench.pressAt(elsewhere, down);
        EXPECT_FALSE(isOpen());
    }
    open();
    bench.pass(0.35);
    bench.pressAt(elsewhere, EventType::otherMouseDown);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AClickInTheItemNeverClosesThroughTheMonitor) {
    launch();
    open();
    bench.pass(10);
    bench.pressAt(inTheItem);
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, AClickInTheLevelNeverClosesThroughTheMonitor) {
    launch();
    open();
    bench.pass(1);
    bench.showLevel(50);
    bench.pressAt(inTheItem);
    EXPECT_TRUE(isOpen());
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, AnItemInNoWindowHasNoInside) {
    launch();
    open();
    bench.pass(1);
    bench.item().place.reset();
    bench.pressAt(inTheItem);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, ASheetKeepsItOpen) {
    launch();
    open();
    bench.pass(1);
    bench.desktop.popovers.hasSheet = true;
    bench.pressAt(elsewhere);
    EXPECT_TRUE(isOpen());
    bench.desktop.popovers.hasSheet = false;
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, TheMonitorsHandlerOnlyPosts) {
    launch();
    open();
    bench.pass(1);
    bench.desktop.displays.pointer = elsewhere;
    bench.desktop.monitors.deliver(EventType::leftMouseDown);
    EXPECT_TRUE(isOpen());
    bench.desktop.runLoop.drain();
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, WithoutMonitorOnlyTheToggleCloses) {
    bench.desktop.monitors.granting = false;
    launch();
    open();
    bench.pass(1);
    bench.pressAt(elsewhere);
    EXPECT_TRUE(isOpen());
    bench.click(bench.button());
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, ListensToClicksOnlyWhileThePopoverIsOpen) {
    const auto isListening = [&] { return bench.desktop.monitors.isArmed({}); };
    launch();
    EXPECT_FALSE(isListening());
    open();
    EXPECT_TRUE(isListening());
    bench.click(bench.button());
    EXPECT_FALSE(isListening());
    bench.pass(1);
    open();
    bench.pass(1);
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isListening());
    open();
    bench.desktop.monitors.drop({});
    EXPECT_TRUE(isListening()) << "the one that takes its place";
}

TEST_F(AppDelegateTest, AClosedPopoverIsNoticedAtTheNextClick) {
    launch();
    open();
    bench.desktop.popovers.shown = false; // by its own screen
    bench.pressAt(elsewhere);
    EXPECT_FALSE(bench.desktop.monitors.isArmed({}));
}

TEST_F(AppDelegateTest, AMonitorThatVanishesIsReplaced) {
    launch();
    bench.desktop.monitors.drop({});
    EXPECT_EQ(bench.desktop.monitors.count(), 1U);
    open();
    bench.pass(1);
    bench.pressAt(elsewhere);
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, NoticesAfterItsEndDoNothing) {
    launch();
    open();
    bench.pass(1);
    bench.desktop.displays.pointer = elsewhere;
    bench.desktop.monitors.deliver(EventType::leftMouseDown);
    bench.delegate.reset();
    bench.desktop.runLoop.drain();
    AppDelegate::showVolumeLevel(40);
    bench.desktop.runLoop.drain();
    EXPECT_TRUE(bench.take().empty());
}

TEST_F(AppDelegateTest, EscapeInTheHubToggles) {
    launch();
    open();
    bench.desktop.popovers.escape();
    EXPECT_THAT(bench.take(), ElementsAre(clicked, "popover close", closed));
}

TEST_F(AppDelegateTest, ASecondStartShowsAndNeverHides) {
    launch();
    bench.delegate->applicationShouldHandleReopen();
    EXPECT_THAT(bench.take(), ElementsAre("popover show below", "popover key", opened));
    bench.delegate->applicationShouldHandleReopen();
    EXPECT_THAT(bench.take(), ElementsAre("popover key"));
    EXPECT_TRUE(isOpen());
}

TEST_F(AppDelegateTest, TheAnchorIsWhatIsInAWindow) {
    launch();
    View stray;
    bench.delegate->togglePopover(&stray);
    EXPECT_EQ(bench.desktop.popovers.anchor, &bench.button());
    bench.delegate->togglePopover(&stray);

    bench.showLevel(50);
    bench.delegate->togglePopover(nullptr);
    EXPECT_EQ(bench.desktop.popovers.anchor, bench.item().customView().get());
    bench.delegate->togglePopover(nullptr);

    bench.delegate->togglePopover(bench.level().get());
    EXPECT_EQ(bench.desktop.popovers.anchor, bench.level().get());
}

TEST_F(AppDelegateTest, RepairsTheButtonWhenItBecomesActive) {
    launch();
    SimulatedStatusButton& button = bench.button();
    const ButtonLook icon = button.look();
    button.setAlphaValue(0.04);
    button.setAction({});
    button.setToolTip("");
    button.setSendsActionOn(0);
    button.setEnabled(false);
    button.setRefusesFirstResponder(true);
    button.buttonCell.alignment = TextAlignment::left;
    ButtonLook look = icon;
    look.title = "kept";
    look.alignment = TextAlignment::left;
    button.setLook(look);

    bench.delegate->applicationDidBecomeActive();
    EXPECT_EQ(button.alphaValue(), 1);
    expectSetUp(button);
    EXPECT_EQ(button.look().title, "kept") << "what it shows is not touched";

    button.setAlphaValue(0.05);
    bench.delegate->applicationDidBecomeActive();
    EXPECT_EQ(button.alphaValue(), 0.05);
}

TEST_F(AppDelegateTest, ClosingWindowsEndsNothing) {
    launch();
    EXPECT_FALSE(bench.delegate->applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, TheFeedIsTheConfiguredOne) {
    launch();
    EXPECT_EQ(bench.desktop.updaters.delegate.lock()->feedURLStringForUpdater(), std::nullopt);
}

} // namespace
} // namespace quillon
