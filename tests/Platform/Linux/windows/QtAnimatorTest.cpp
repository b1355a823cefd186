#include "Platform/Linux/windows/QtAnimator.h"

#include "support/XServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

constexpr double seconds = 0.12;
constexpr auto curve = TimingCurve::easeInEaseOut;

struct Step {
    double time; // of the whole, 0…1
    double alpha;
};

/// A view that keeps what it has been set to, and when.
struct RecordingView final : View, ViewHost {
    RecordingView() {
        setHost(this);
        watch.start();
    }
    void viewChanged() override {
        steps.push_back({static_cast<double>(watch.nsecsElapsed()) / 1e9 / seconds, alphaValue()});
    }
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return std::nullopt; }

    QElapsedTimer watch;
    std::vector<Step> steps;
};

struct QtAnimatorTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    std::unique_ptr<QtAnimator> animator = std::make_unique<QtAnimator>();
    std::shared_ptr<RecordingView> view = std::make_shared<RecordingView>();
    int completions = 0;
    QElapsedTimer watch;

    void fade(double alpha, double duration = seconds) {
        watch.start();
        animator->animateAlpha(view, alpha, duration, curve, [this] { ++completions; });
    }

    [[nodiscard]] bool completed(int count = 1) const {
        return waitUntil([&] { return completions == count; });
    }

    [[nodiscard]] double elapsed() const { return static_cast<double>(watch.nsecsElapsed()) / 1e9; }
};

TEST_F(QtAnimatorTest, GoesThereSlowlyAtFirstThenCompletes) {
    fade(0);
    EXPECT_EQ(completions, 0);
    EXPECT_EQ(animator->running(), 1);
    ASSERT_TRUE(completed());
    EXPECT_GE(elapsed(), seconds * 0.95);
    EXPECT_EQ(view->alphaValue(), 0);
    EXPECT_EQ(animator->running(), 0);
    double before = 1;
    for (const Step& step : view->steps) {
        EXPECT_LE(step.alpha, before);
        before = step.alpha;
        if (step.time < 0.3) { // a straight line would have gone as far as the time has
            EXPECT_LE(1 - step.alpha, step.time * 0.75);
        }
    }
}

TEST_F(QtAnimatorTest, BeginsWhereTheViewIs) {
    view->setAlphaValue(0.5);
    view->steps.clear();
    fade(1);
    ASSERT_TRUE(completed());
    ASSERT_FALSE(view->steps.empty());
    EXPECT_GT(view->steps.front().alpha, 0.5);
    EXPECT_EQ(view->alphaValue(), 1);
}

TEST_F(QtAnimatorTest, SetWithoutAnimationItStaysSoButCompletesInTime) {
    fade(0);
    ASSERT_TRUE(waitUntil([&] { return view->alphaValue() < 1; }));
    animator->setAlphaWithoutAnimation(*view, 0.75);
    EXPECT_EQ(animator->running(), 0);
    view->steps.clear();
    ASSERT_TRUE(completed());
    EXPECT_GE(elapsed(), seconds * 0.95);
    EXPECT_EQ(view->alphaValue(), 0.75);
    EXPECT_TRUE(view->steps.empty());
}

TEST_F(QtAnimatorTest, SetByTheViewItselfItStillEndsWhereItWasToGo) {
    fade(0);
    view->setAlphaValue(0.9);
    ASSERT_TRUE(completed());
    EXPECT_EQ(view->alphaValue(), 0);
}

TEST_F(QtAnimatorTest, CompletesWhenTheViewIsGone) {
    fade(0);
    view.reset();
    ASSERT_TRUE(waitUntil([&] { return animator->running() == 0; }));
    ASSERT_TRUE(completed());
    EXPECT_GE(elapsed(), seconds * 0.95);
}

TEST_F(QtAnimatorTest, ASecondOneTakesOverAndBothComplete) {
    std::vector<int> order;
    animator->animateAlpha(view, 0, seconds / 2, curve, [&] { order.push_back(1); });
    animator->animateAlpha(view, 0.8, seconds, curve, [&] { order.push_back(2); });
    EXPECT_EQ(animator->running(), 1);
    ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_EQ(view->alphaValue(), 0.8);
    for (const Step& step : view->steps) {
        EXPECT_GE(step.alpha, 0.8) << "the first has gone on";
    }
}

TEST_F(QtAnimatorTest, NoTimeAtAllStillCompletesLater) {
    fade(0.25, 0);
    EXPECT_EQ(completions, 0);
    ASSERT_TRUE(completed());
    EXPECT_EQ(view->alphaValue(), 0.25);
}

TEST_F(QtAnimatorTest, ACompletionMayBeginTheNext) {
    bool second = false;
    animator->animateAlpha(view, 0, seconds / 4, curve, [&] {
        animator->animateAlpha(view, 1, seconds / 4, curve, [&] { second = true; });
    });
    ASSERT_TRUE(waitUntil([&] { return second; }));
    EXPECT_EQ(view->alphaValue(), 1);
}

TEST_F(QtAnimatorTest, ACompletionMayDestroyTheAnimator) {
    animator->animateAlpha(view, 0, seconds / 4, curve, [this] { animator.reset(); });
    fade(0.5); // goes with it
    ASSERT_TRUE(waitUntil([&] { return animator == nullptr; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(completions, 0);
}

TEST_F(QtAnimatorTest, WithoutACompletion) {
    animator->animateAlpha(view, 0, seconds / 4, curve, {});
    EXPECT_TRUE(waitUntil([&] { return view->alphaValue() == 0; }));
}

} // namespace
} // namespace quillon
