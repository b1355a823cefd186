#include "Platform/Linux/x11/TapExchange.h"

#include <gtest/gtest.h>

#include <future>

namespace quillon {
namespace {

using namespace std::chrono_literals;
using Question = TapExchange::Question;

constexpr auto longPatience = 10'000ms; // never runs out in a test that passes
const auto idle = [] {};                // what the asker does meanwhile

TEST(TapExchange, CarriesTheQuestionOverAndTheAnswerBack) {
    TapExchange exchange(longPatience);
    for (const Verdict verdict : {Verdict::consume, Verdict::pass}) {
        bool timedOut = true;
        std::promise<void> woken;
        auto answer = std::async(std::launch::async, [&] {
            return exchange.ask(
                notchOfButton(4, {1, 2}), timedOut, [&] { woken.set_value(); }, idle);
        });
        woken.get_future().wait();
        ScrollNotch notch;
        ASSERT_EQ(exchange.take(notch), Question::open);
        EXPECT_EQ(buttonOfNotch(notch), 4);
        EXPECT_EQ(notch.location, (Point{1, 2}));
        EXPECT_TRUE(exchange.isAwaited());
        EXPECT_TRUE(exchange.answer(verdict));
        EXPECT_EQ(answer.get(), verdict);
        EXPECT_FALSE(timedOut);
    }
}

TEST(TapExchange, EventPassesWhenNobodyLooks) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    EXPECT_EQ(exchange.ask(
                  notchOfButton(4, {}), timedOut, [] {}, idle),
              Verdict::pass);
    EXPECT_TRUE(timedOut);
    ScrollNotch notch;
    EXPECT_EQ(exchange.take(notch), Question::expired) << "the taps must be told";
    EXPECT_EQ(exchange.take(notch), Question::none) << "once";
}

TEST(TapExchange, EventPassesWhenTheAnswerIsLate) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    ScrollNotch notch;
    EXPECT_EQ(exchange.ask(
                  notchOfButton(4, {}), timedOut, [&] { exchange.take(notch); }, idle),
              Verdict::pass);
    EXPECT_TRUE(timedOut);
    EXPECT_FALSE(exchange.isAwaited());
    EXPECT_FALSE(exchange.answer(Verdict::consume)) << "nobody waits for it";
    EXPECT_EQ(exchange.take(notch), Question::none);
}

TEST(TapExchange, LateAnswerIsNotTakenForThatOfTheNextEvent) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    ScrollNotch notch;
    (void)exchange.ask(
        notchOfButton(4, {}), timedOut, [&] { exchange.take(notch); }, idle);
    exchange.answer(Verdict::consume);
    EXPECT_EQ(exchange.ask(
                  notchOfButton(5, {}), timedOut, [] {}, idle),
              Verdict::pass);
    EXPECT_TRUE(timedOut);
}

TEST(TapExchange, NoQuestionNoAnswer) {
    TapExchange exchange(longPatience);
    ScrollNotch notch;
    EXPECT_EQ(exchange.take(notch), Question::none);
    EXPECT_FALSE(exchange.isAwaited());
}

TEST(TapExchange, LateAnswerLeavesTheNextQuestionOpen) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    ScrollNotch notch;
    (void)exchange.ask(
        notchOfButton(4, {}), timedOut, [&] { exchange.take(notch); }, idle);
    Question seen = Question::none;
    const Verdict verdict = exchange.ask(
        notchOfButton(5, {}), timedOut,
        [&] {
            EXPECT_FALSE(exchange.answer(Verdict::consume)) << "that was for the first one";
            seen = exchange.take(notch);
            EXPECT_TRUE(exchange.answer(Verdict::pass));
        },
        idle);
    EXPECT_EQ(seen, Question::open);
    EXPECT_EQ(buttonOfNotch(notch), 5);
    EXPECT_EQ(verdict, Verdict::pass);
}

} // namespace
} // namespace quillon
