#include "Platform/Linux/x11/TapExchange.h"

#include <gtest/gtest.h>

#include <future>

namespace quillon {
namespace {

using namespace std::chrono_literals;
using Question = TapExchange::Question;

constexpr auto longPatience = 10'000ms; // never runs out in a test that passes

TEST(TapExchange, CarriesTheQuestionOverAndTheAnswerBack) {
    TapExchange exchange(longPatience);
    for (const Verdict verdict : {Verdict::consume, Verdict::pass}) {
        bool timedOut = true;
        std::promise<void> woken;
        auto answer = std::async(std::launch::async, [&] {
            return exchange.ask({4, {1, 2}}, timedOut, [&] { woken.set_value(); });
        });
        woken.get_future().wait();
        WheelPress press;
        ASSERT_EQ(exchange.take(press), Question::open);
        EXPECT_EQ(press.button, 4);
        EXPECT_EQ(press.location, (Point{1, 2}));
        EXPECT_TRUE(exchange.isAwaited());
        EXPECT_TRUE(exchange.answer(verdict));
        EXPECT_EQ(answer.get(), verdict);
        EXPECT_FALSE(timedOut);
    }
}

TEST(TapExchange, EventPassesWhenNobodyLooks) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    EXPECT_EQ(exchange.ask({4, {}}, timedOut, [] {}), Verdict::pass);
    EXPECT_TRUE(timedOut);
    WheelPress press;
    EXPECT_EQ(exchange.take(press), Question::expired) << "the taps must be told";
    EXPECT_EQ(exchange.take(press), Question::none) << "once";
}

TEST(TapExchange, EventPassesWhenTheAnswerIsLate) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    WheelPress press;
    EXPECT_EQ(exchange.ask({4, {}}, timedOut, [&] { exchange.take(press); }), Verdict::pass);
    EXPECT_TRUE(timedOut);
    EXPECT_FALSE(exchange.isAwaited());
    EXPECT_FALSE(exchange.answer(Verdict::consume)) << "nobody waits for it";
    EXPECT_EQ(exchange.take(press), Question::none);
}

TEST(TapExchange, LateAnswerIsNotTakenForThatOfTheNextEvent) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    WheelPress press;
    (void)exchange.ask({4, {}}, timedOut, [&] { exchange.take(press); });
    exchange.answer(Verdict::consume);
    EXPECT_EQ(exchange.ask({5, {}}, timedOut, [] {}), Verdict::pass);
    EXPECT_TRUE(timedOut);
}

TEST(TapExchange, NoQuestionNoAnswer) {
    TapExchange exchange(longPatience);
    WheelPress press;
    EXPECT_EQ(exchange.take(press), Question::none);
    EXPECT_FALSE(exchange.isAwaited());
}

} // namespace
} // namespace quillon
