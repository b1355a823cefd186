#include "support/ShellBench.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <thread>

namespace quillon {
namespace {

class VolumeLevel : public testing::Test {
  protected:
    VolumeLevel() {
        bench.launch();
        bench.take();
    }

    [[nodiscard]] bool isShown() const { return bench.level() != nullptr; }
    [[nodiscard]] double level() const { return bench.level()->level(); }
    [[nodiscard]] std::string toolTip() const { return bench.level()->toolTip(); }

    ShellBench bench;
};

TEST_F(VolumeLevel, TheFirstIsPresentedAtOnce) {
    bench.showLevel(42.5F);
    ASSERT_TRUE(isShown());
    EXPECT_DOUBLE_EQ(level(), 0.425);
    EXPECT_EQ(toolTip(), "Volume 42.5");
    EXPECT_EQ(bench.alpha(), 0);
    EXPECT_EQ(bench.level()->action().name, "statusBarButtonPressed:");
    EXPECT_EQ(bench.level()->sendsActionOn(),
              eventMask(EventType::leftMouseUp) | eventMask(EventType::rightMouseUp));
}

TEST_F(VolumeLevel, IsAsWideAsTheButtonAndAsHighAsTheBar) {
    bench.button().boundsRect = {0, 0, 27.3, 22};
    bench.showLevel(10);
    EXPECT_EQ(bench.item().customView()->frame(), (Rect{0, 0, 28, 22}));
    EXPECT_EQ(bench.level()->frame(), (Rect{0, 0, 28, 22}));
    EXPECT_EQ(bench.item().length, 28);
}

TEST_F(VolumeLevel, WidthIsTheFirstOfBoundsFrameAndFittingSizeThatIsOne) {
    const auto widthWith = [&](Rect bounds, Rect frame, Size fitting) {
        bench.button().boundsRect = bounds;
        bench.button().setFrame(frame);
        bench.button().fitting = fitting;
        bench.showLevel(10);
        const double width = bench.item().length;
        bench.click(*bench.level());
        return width;
    };
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(widthWith({0, 0, 20.5, 1}, {0, 0, 30, 1}, {40, 1}), 21);
    EXPECT_EQ(widthWith({0, 0, 0, 1}, {0, 0, 30, 1}, {40, 1}), 30);
    EXPECT_EQ(widthWith({0, 0, infinite, 1}, {0, 0, -3, 1}, {40, 1}), 40);
    EXPECT_EQ(widthWith({}, {}, {}), 40) << "the last good one is kept";
}

TEST_F(VolumeLevel, WithoutAnyMeasurementTheLengthStaysSquare) {
    ShellBench fresh;
    fresh.desktop.statusBar.buttonBounds = {};
    fresh.launch();
    fresh.showLevel(10);
    EXPECT_EQ(fresh.item().length, squareStatusItemLength);
}

TEST_F(VolumeLevel, FadesInHoldsAndFadesOut) {
    bench.button().setAlphaValue(0.3);
    bench.showLevel(30);
    bench.pass(0.1);
    EXPECT_NEAR(bench.alpha(), 0.5, 0.01);
    bench.pass(0.1);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(1.49);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(0.11); // 1.8 s
    EXPECT_NEAR(bench.alpha(), 0.5, 0.1);
    EXPECT_TRUE(isShown());
    bench.pass(0.11);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(bench.button().alphaValue(), 1);
    EXPECT_EQ(bench.button().look().image->name, "MenuBarLogo");
    EXPECT_EQ(bench.item().length, 24);
}

TEST_F(VolumeLevel, HoldsForASecondAndAHalfAfterTheFadeInToTheMillisecond) {
    bench.showLevel(30);
    bench.pass(1.699);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(0.001 + 0.02);
    EXPECT_LT(bench.alpha(), 1);
    bench.pass(0.179);
    EXPECT_TRUE(isShown());
    bench.pass(0.001);
    EXPECT_FALSE(isShown());
}

TEST_F(VolumeLevel, ABurstUpdatesEveryNinetyMillisecondsAndEndsOnTheNewest) {
    bench.showLevel(0);
    std::vector<std::pair<int, double>> shown{{0, level()}};
    for (int i = 1; i <= 50; ++i) {
        bench.pass(0.01);
        if (level() != shown.back().second) {
            shown.emplace_back(i * 10, level());
        }
        bench.showLevel(static_cast<float>(i));
        if (level() != shown.back().second) {
            shown.emplace_back(i * 10, level());
        }
    }
    ASSERT_EQ(shown.size(), 6U);
    for (std::size_t i = 1; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i].first, static_cast<int>(i) * 90);
    }
    bench.pass(0.09);
    EXPECT_DOUBLE_EQ(level(), 0.5);
    EXPECT_EQ(toolTip(), "Volume 50.0");
}

TEST_F(VolumeLevel, AnUpdateAfterTheIntervalIsImmediate) {
    bench.showLevel(10);
    bench.pass(0.09);
    bench.showLevel(20);
    EXPECT_DOUBLE_EQ(level(), 0.2);
    bench.pass(0.0899);
    bench.showLevel(30);
    EXPECT_DOUBLE_EQ(level(), 0.2);
    bench.pass(0.0001);
    EXPECT_DOUBLE_EQ(level(), 0.3);
}

TEST_F(VolumeLevel, AnUpdateBringsFullAlphaAtOnceAndKeepsIt) {
    bench.showLevel(10);
    bench.pass(0.1);
    bench.showLevel(20);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(0.05);
    EXPECT_EQ(bench.alpha(), 1);
}

TEST_F(VolumeLevel, EachUpdatePushesTheEndBack) {
    bench.showLevel(10);
    for (int i = 0; i < 5; ++i) {
        bench.pass(1.4);
        bench.showLevel(20);
    }
    bench.pass(1.499);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(0.202);
    EXPECT_FALSE(isShown());
}

TEST_F(VolumeLevel, APercentDuringTheFadeOutBringsItBack) {
    bench.showLevel(10);
    bench.pass(1.8);
    ASSERT_LT(bench.alpha(), 1);
    bench.showLevel(20);
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(0.3); // the fade's completion has come and gone
    ASSERT_TRUE(isShown());
    EXPECT_EQ(bench.alpha(), 1);
    bench.pass(1.4);
    EXPECT_FALSE(isShown());
}

TEST_F(VolumeLevel, RedrawsOnlyForAChangeThatCanBeSeen) {
    bench.showLevel(42.5F);
    bench.pass(0.5);
    const int before = bench.item().changes;
    bench.showLevel(42.6F);
    EXPECT_EQ(bench.item().changes, before);
    EXPECT_EQ(toolTip(), "Volume 42.6");
    bench.pass(0.5);
    bench.showLevel(42.9F);
    EXPECT_GT(bench.item().changes, before);
}

TEST_F(VolumeLevel, AClickRestoresTheIconAndOpensTheHub) {
    bench.showLevel(10);
    bench.pass(0.5);
    bench.take();
    bench.click(*bench.level());
    EXPECT_FALSE(isShown());
    EXPECT_EQ(bench.desktop.popovers.anchor, &bench.button());
    EXPECT_TRUE(bench.desktop.popovers.shown);
    bench.take();
    bench.pass(3);
    EXPECT_TRUE(bench.take().empty()) << "the hold has been cancelled";
    EXPECT_EQ(bench.button().toolTip(), "Open Quillon — Right-click for menu");
}

TEST_F(VolumeLevel, WithTheHubOpenAClickOnlyRestoresTheIcon) {
    bench.click(bench.button());
    bench.showLevel(10);
    bench.take();
    bench.click(*bench.level());
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(bench.desktop.popovers.shown);
    EXPECT_THAT(bench.take(), testing::ElementsAre("status button"));
}

TEST_F(VolumeLevel, AClickDropsWhatIsQueued) {
    bench.showLevel(10);
    bench.showLevel(20);
    bench.click(*bench.level());
    bench.pass(1);
    EXPECT_FALSE(isShown());
    bench.showLevel(30);
    EXPECT_TRUE(isShown()) << "the next one is presented at once";
    EXPECT_DOUBLE_EQ(level(), 0.3);
}

TEST_F(VolumeLevel, AClickDuringTheFadeOutRestoresTheIconOnce) {
    bench.showLevel(10);
    bench.pass(1.8);
    bench.take();
    bench.click(*bench.level());
    bench.showLevel(20);
    bench.pass(0.3); // the old fade's completion has come
    EXPECT_TRUE(isShown());
}

TEST_F(VolumeLevel, PercentsOutsideTheRange) {
    bench.showLevel(150);
    EXPECT_DOUBLE_EQ(level(), 1);
    EXPECT_EQ(toolTip(), "Volume 100.0");
    bench.pass(1);
    bench.showLevel(-3);
    EXPECT_EQ(level(), 0);
    EXPECT_EQ(toolTip(), "Volume 0.0");
    bench.pass(1);
    bench.showLevel(-0.0F);
    EXPECT_EQ(toolTip(), "Volume 0.0");
    bench.pass(1);
    bench.showLevel(33.36F);
    EXPECT_NEAR(level(), 0.334, 1e-6);
    EXPECT_EQ(toolTip(), "Volume 33.4");
    bench.pass(1);
    bench.showLevel(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(toolTip(), "Volume —");
    bench.pass(1);
    const int before = bench.item().changes;
    bench.showLevel(50);
    EXPECT_GT(bench.item().changes, before);
}

TEST_F(VolumeLevel, WithoutAPlatformNothingHappens) {
    Platform::setCurrent(nullptr);
    AppDelegate::showVolumeLevel(70);
    bench.desktop.runLoop.drain();
    EXPECT_FALSE(isShown());
}

TEST_F(VolumeLevel, MayBeReportedFromAnyThread) {
    std::thread([] { AppDelegate::showVolumeLevel(70); }).join();
    EXPECT_FALSE(isShown());
    bench.desktop.runLoop.drain();
    EXPECT_TRUE(isShown());
}

TEST_F(VolumeLevel, ForeignCustomViewGivesWay) {
    bench.item().setCustomView(std::make_shared<View>());
    bench.showLevel(10);
    EXPECT_TRUE(isShown());
    bench.pass(2);
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(bench.item().customView());
}

TEST_F(VolumeLevel, AForeignViewThatReplacesItIsTakenOffAtTheEndOfTheHold) {
    bench.showLevel(10);
    bench.pass(0.5);
    bench.item().setCustomView(std::make_shared<View>());
    bench.pass(1.2);
    EXPECT_FALSE(bench.item().customView());
}

TEST_F(VolumeLevel, BecomingActiveDuringItTouchesNothing) {
    bench.showLevel(10);
    bench.delegate->applicationDidBecomeActive();
    EXPECT_TRUE(isShown());
}

TEST_F(VolumeLevel, IdleAgainThereIsNoTimer) {
    const auto before = bench.desktop.runLoop.timerCount();
    bench.showLevel(10);
    bench.pass(5);
    EXPECT_EQ(bench.desktop.runLoop.timerCount(), before);
}

} // namespace
} // namespace quillon
