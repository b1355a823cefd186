#include "Platform/Linux/x11/TapExchange.h"

#include <gtest/gtest.h>

#include <future>

namespace quillon {
namespace {

using namespace std::chrono_literals;
using Question = TapExchange::Question;

constexpr auto longPatience = 10'000ms; // never runs out in a test that passes
const auto idle = [] {};                // what the asker does meanwhile

int buttonOf(const TapQuestion& question) { return buttonOfNotch(std::get<ScrollNotch>(question)); }

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
        TapQuestion question;
        ASSERT_EQ(exchange.take(question), Question::open);
        EXPECT_EQ(buttonOf(question), 4);
        EXPECT_EQ(locationOf(question), (Point{1, 2}));
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
    TapQuestion question;
    EXPECT_EQ(exchange.take(question), Question::expired) << "the taps must be told";
    EXPECT_EQ(exchange.take(question), Question::none) << "once";
}

TEST(TapExchange, EventPassesWhenTheAnswerIsLate) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    TapQuestion question;
    EXPECT_EQ(exchange.ask(
                  notchOfButton(4, {}), timedOut, [&] { exchange.take(question); }, idle),
              Verdict::pass);
    EXPECT_TRUE(timedOut);
    EXPECT_FALSE(exchange.isAwaited());
    EXPECT_FALSE(exchange.answer(Verdict::consume)) << "nobody waits for it";
    EXPECT_EQ(exchange.take(question), Question::none);
}

TEST(TapExchange, AnswerIsLateByTheClockEvenIfTheAskerHasNotNoticed) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    bool isInTime = true;
    const Verdict verdict = exchange.ask(
        notchOfButton(4, {}), timedOut,
        [&] {
            TapQuestion question;
            exchange.take(question);
            const auto limit = std::chrono::steady_clock::now() + 2ms;
            while (std::chrono::steady_clock::now() < limit) {
            }
            isInTime = exchange.answer(Verdict::consume); // before it waits
        },
        idle);
    EXPECT_FALSE(isInTime);
    EXPECT_TRUE(timedOut);
    EXPECT_EQ(verdict, Verdict::pass);
}

TEST(TapExchange, LateAnswerIsNotTakenForThatOfTheNextEvent) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    TapQuestion question;
    (void)exchange.ask(
        notchOfButton(4, {}), timedOut, [&] { exchange.take(question); }, idle);
    exchange.answer(Verdict::consume);
    EXPECT_EQ(exchange.ask(
                  notchOfButton(5, {}), timedOut, [] {}, idle),
              Verdict::pass);
    EXPECT_TRUE(timedOut);
}

TEST(TapExchange, NoQuestionNoAnswer) {
    TapExchange exchange(longPatience);
    TapQuestion question;
    EXPECT_EQ(exchange.take(question), Question::none);
    EXPECT_FALSE(exchange.isAwaited());
}

TEST(TapExchange, LateAnswerLeavesTheNextQuestionOpen) {
    TapExchange exchange(1ms);
    bool timedOut = false;
    TapQuestion question;
    (void)exchange.ask(
        notchOfButton(4, {}), timedOut, [&] { exchange.take(question); }, idle);
    Question seen = Question::none;
    const Verdict verdict = exchange.ask(
        notchOfButton(5, {}), timedOut,
        [&] {
            EXPECT_FALSE(exchange.answer(Verdict::consume)) << "that was for the first one";
            seen = exchange.take(question);
            EXPECT_TRUE(exchange.answer(Verdict::pass));
        },
        idle);
    EXPECT_EQ(seen, Question::open);
    EXPECT_EQ(buttonOf(question), 5);
    EXPECT_EQ(verdict, Verdict::pass);
}

} // namespace
} // namespace quillon
