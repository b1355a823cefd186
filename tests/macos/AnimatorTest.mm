#include "VisibleShell.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using namespace fakes;

class AnimatorTest : public testing::Test {
  protected:
    AnimatorTest() { shell.launch(); }

    VisibleShell shell;
};

TEST_F(AnimatorTest, FadesTheLevelIn) {
    shell.showLevel(50);
    ASSERT_EQ(fakeAnimations().groups.size(), 1U);
    EXPECT_EQ(fakeAnimations().groups[0].duration, 0.2);
    EXPECT_EQ(fakeAnimations().groups[0].timingFunction, "easeInEaseOut");
    ASSERT_EQ(fakeAnimations().running.size(), 1U);
    EXPECT_TRUE(fakeAnimations().running[0].view == shell.container());
    EXPECT_EQ(fakeAnimations().running[0].from, 0);
    EXPECT_EQ(fakeAnimations().running[0].to, 1);
    shell.pass(0.1);
    EXPECT_EQ([shell.container() alphaValue], 0.5);
    shell.pass(0.1);
    EXPECT_EQ([shell.container() alphaValue], 1);
}

TEST_F(AnimatorTest, AnUpdateShowsTheLevelAtOnceAndForGood) {
    shell.showLevel(50);
    shell.pass(0.1);
    shell.showLevel(60);
    EXPECT_EQ([shell.container() alphaValue], 1);
    EXPECT_FALSE(fakeAnimations().groups.back().allowsImplicitAnimation);
    EXPECT_EQ(fakeAnimations().groups.back().duration, 0);
    EXPECT_TRUE(fakeAnimations().open.empty());
    shell.pass(0.05);
    EXPECT_EQ([shell.container() alphaValue], 1);
}

TEST_F(AnimatorTest, FadesTheLevelOutAndBringsTheButtonBack) {
    shell.showLevel(50);
    shell.pass(0.2);
    shell.pass(1.5);
    ASSERT_EQ(fakeAnimations().running.size(), 0U); // a group of the same moment is over at once
    EXPECT_EQ(fakeAnimations().groups.back().duration, 0.2);
    EXPECT_TRUE(shell.container() == nil);
    EXPECT_TRUE(shell.button() != nil);
}

TEST_F(AnimatorTest, AnUpdateInTheFadeOutKeepsTheLevel) {
    shell.showLevel(50);
    shell.pass(0.2);
    shell.desktop.runLoop.advance(1.5);
    ASSERT_EQ(fakeAnimations().running.size(), 1U);
    shell.pass(0.1);
    EXPECT_EQ([shell.container() alphaValue], 0.5);
    shell.showLevel(60);
    shell.pass(0.15);
    ASSERT_TRUE(shell.container() != nil);
    EXPECT_EQ([shell.container() alphaValue], 1);
}

TEST_F(AnimatorTest, CompletesWhenTheViewIsGone) {
    bool isCompleted = false;
    {
        const auto view = std::make_shared<View>();
        shell.animator.animateAlpha(view, 0, 0.2, TimingCurve::easeInEaseOut,
                                    [&] { isCompleted = true; });
    }
    fakeAnimations().advance(0.1);
    EXPECT_FALSE(isCompleted);
    fakeAnimations().advance(0.1);
    EXPECT_TRUE(isCompleted);
}

TEST_F(AnimatorTest, TellsTheViewItsAlphaInTheEnd) {
    const auto view = std::make_shared<View>();
    shell.animator.animateAlpha(view, 0.5, 0.2, TimingCurve::easeInEaseOut, nullptr);
    EXPECT_EQ(view->alphaValue(), 1);
    fakeAnimations().advance(0.2);
    EXPECT_EQ(view->alphaValue(), 0.5);
}

TEST_F(AnimatorTest, OfTwoAnimationsTheLaterCounts) {
    const auto view = std::make_shared<View>();
    int completions = 0;
    const auto count = [&] { ++completions; };
    view->setAlphaValue(0.25);
    shell.animator.animateAlpha(view, 0, 0.2, TimingCurve::easeInEaseOut, count);
    shell.animator.animateAlpha(view, 0.5, 0.4, TimingCurve::easeInEaseOut, count);
    fakeAnimations().advance(0.2);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(view->alphaValue(), 0.25);
    fakeAnimations().advance(0.2);
    EXPECT_EQ(completions, 2);
    EXPECT_EQ(view->alphaValue(), 0.5);
}

TEST_F(AnimatorTest, AnAnimationChangesNothingThatWasSetMeanwhile) {
    const auto view = std::make_shared<View>();
    shell.animator.animateAlpha(view, 0, 0.2, TimingCurve::easeInEaseOut, nullptr);
    shell.animator.setAlphaWithoutAnimation(*view, 0.75);
    fakeAnimations().advance(0.2);
    EXPECT_EQ(view->alphaValue(), 0.75);
}

} // namespace
} // namespace quillon
