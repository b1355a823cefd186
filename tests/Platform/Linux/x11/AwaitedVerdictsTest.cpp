#include "Platform/Linux/x11/AwaitedVerdicts.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using enum EventType;
using Kind = CaughtPress::Kind;
using Types = std::vector<EventType>;

struct AwaitedVerdictsTest : testing::Test {
    CaughtPresses caught;
    std::vector<std::function<void()>> questions;
    std::vector<MonitoredEvent> told;
    std::function<void()> meanwhile; // runs inside the listener
    std::optional<AwaitedVerdicts> verdicts;

    AwaitedVerdictsTest() {
        caught.whenSettled = [this](std::function<void()> done) {
            questions.push_back(std::move(done));
        };
        verdicts.emplace(caught, [this](const MonitoredEvent& event) {
            told.push_back(event);
            if (meanwhile) {
                meanwhile();
            }
        });
    }

    void mayCatchAll() {
        caught.setMayCatch(Kind::left);
        caught.setMayCatch(Kind::wheel);
    }
    void button(EventType type, std::uint32_t time = 0, std::uint16_t device = 4) {
        verdicts->add({{.type = type}, device, {Kind::left, device, time}});
    }
    void notch(std::uint32_t time, double up = 1) {
        verdicts->add({{.type = scrollWheel, .deltaY = up}, 4, {Kind::wheel, 4, time}});
    }
    void answer() {
        ASSERT_FALSE(questions.empty());
        const auto question = std::move(questions.front());
        questions.erase(questions.begin());
        question();
    }
    Types types() {
        Types types;
        for (const auto& event : std::exchange(told, {})) {
            types.push_back(event.type);
        }
        return types;
    }
};

TEST_F(AwaitedVerdictsTest, NobodyIsAskedAboutWhatNobodyCouldCatch) {
    button(leftMouseDown);
    notch(1);
    EXPECT_EQ(types(), (Types{leftMouseDown, scrollWheel}));
    caught.setMayCatch(Kind::left);
    notch(2);
    button(rightMouseDown);
    EXPECT_EQ(types(), (Types{scrollWheel, rightMouseDown}));
    EXPECT_TRUE(questions.empty());
    caught.whenSettled = nullptr;
    button(leftMouseDown);
    EXPECT_EQ(types(), Types{leftMouseDown}) << "whoever caught it is gone";
}

TEST_F(AwaitedVerdictsTest, WhatWasConsumedIsNotTold) {
    mayCatchAll();
    for (std::uint32_t number = 0; number < 9; ++number) {
        const bool passes = number % 3 == 0;
        notch(number * 100, passes ? -1 : 1);
        if (!passes) {
            caught.consume({Kind::wheel, 4, number * 100});
        }
    }
    EXPECT_TRUE(told.empty()) << "before the answer";
    for (int i = 0; i < 2; ++i) {
        answer();
    }
    ASSERT_EQ(told.size(), 3U);
    for (const auto& event : told) {
        EXPECT_EQ(event.deltaY, -1);
    }
    EXPECT_TRUE(questions.empty());
}

TEST_F(AwaitedVerdictsTest, OneQuestionAtATimeHoweverManyCome) {
    mayCatchAll();
    for (std::uint32_t time = 1; time <= 100; ++time) {
        notch(time * 20);
    }
    ASSERT_EQ(questions.size(), 1U);
    answer();
    EXPECT_EQ(told.size(), 1U) << "the others came after the question";
    ASSERT_EQ(questions.size(), 1U);
    answer();
    EXPECT_EQ(told.size(), 100U);
    EXPECT_TRUE(questions.empty());
}

TEST_F(AwaitedVerdictsTest, WhatComesLaterWaitsBehindIt) {
    mayCatchAll();
    button(leftMouseDown, 10);
    button(leftMouseUp);
    button(rightMouseDown);
    EXPECT_TRUE(told.empty());
    answer();
    EXPECT_EQ(types(), (Types{leftMouseDown, leftMouseUp, rightMouseDown}));
    EXPECT_TRUE(questions.empty()) << "nothing that waits could be consumed";
    button(rightMouseUp);
    EXPECT_EQ(types(), Types{rightMouseUp});
}

TEST_F(AwaitedVerdictsTest, TheReleasesOfAConsumedPressAreGoneWithIt) {
    mayCatchAll();
    caught.consume({Kind::left, 4, 10});
    button(leftMouseDown, 10);
    button(leftMouseUp);
    button(leftMouseUp, 0, 5);
    answer();
    button(leftMouseUp);
    EXPECT_EQ(types(), Types{leftMouseUp}) << "that of another device";
    button(leftMouseDown, 1000);
    answer();
    button(leftMouseUp);
    EXPECT_EQ(types(), (Types{leftMouseDown, leftMouseUp}));
}

TEST_F(AwaitedVerdictsTest, WhatIsForgottenIsNotToldWhenTheAnswerComes) {
    mayCatchAll();
    notch(1);
    verdicts->clear();
    notch(100);
    ASSERT_EQ(questions.size(), 2U);
    answer();
    EXPECT_TRUE(told.empty());
    answer();
    EXPECT_EQ(told.size(), 1U);
    notch(200);
    verdicts.reset();
    answer();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(AwaitedVerdictsTest, AListenerMayMakeAnEndOfIt) {
    mayCatchAll();
    notch(1);
    notch(2);
    meanwhile = [this] { verdicts->clear(); };
    answer();
    EXPECT_EQ(told.size(), 1U);
    EXPECT_TRUE(questions.empty());
    meanwhile = [this] {
        meanwhile = nullptr;
        button(rightMouseDown);
    };
    notch(3);
    answer();
    EXPECT_EQ(types(), (Types{scrollWheel, scrollWheel, rightMouseDown})) << "nor one more";
}

} // namespace
} // namespace quillon
