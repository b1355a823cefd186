#include "Platform/Linux/updates/UpdaterBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using DailyChecksTest = UpdaterBench;
using Shown = std::vector<std::string>;

constexpr double hour = 3600;
constexpr double day = 24 * hour;

TEST_F(DailyChecksTest, ByItselfItSpeaksOnceOfEachVersion) {
    updater->start();
    loop.drain();
    loop.advance(60);
    EXPECT_TRUE(fetches->addresses.empty());
    advance(60, itemOf("0.2.0"));
    EXPECT_EQ(fetches->addresses.size(), 1);
    EXPECT_EQ(takeShown(), Shown{available});
    for (const char* version : {"0.2.0", "0.2", "0.1.5", "0.1.0"}) {
        advance(day + 2 * hour, itemOf(version));
        EXPECT_EQ(takeShown(), Shown{}) << version;
    }
    EXPECT_EQ(fetches->addresses.size(), 5);
    advance(day + 2 * hour, itemOf("0.3.0"));
    EXPECT_EQ(takeShown().size(), 1);
    checkAndAnswer(itemOf("0.3.0"));
    EXPECT_EQ(takeShown().size(), 1) << "who asks is told again";
}

TEST_F(DailyChecksTest, ByItselfItKeepsFailuresToItself) {
    updater->start();
    loop.drain();
    fetches->ready = FeedFailure{"it is empty"};
    loop.advance(120);
    EXPECT_EQ(takeShown(), Shown{});
    EXPECT_EQ(diagnostics.take(), Shown{"⚠️ The update feed could not be read: it is empty."});
    loop.advance(20 * hour);
    EXPECT_EQ(fetches->addresses.size(), 1);
}

TEST_F(DailyChecksTest, WhoAsksDuringADailyCheckGetsItsResult) {
    updater->start();
    loop.drain();
    loop.advance(100);
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(fetches->addresses.size(), 1);
    answer("");
    EXPECT_EQ(takeShown(), Shown{upToDate});
    advance(day + 2 * hour, "");
    EXPECT_EQ(fetches->addresses.size(), 2);
    EXPECT_EQ(takeShown(), Shown{}) << "the next one is its own again";
}

TEST_F(DailyChecksTest, ADailyCheckDoesNotDisturbTheUsers) {
    updater->start();
    loop.drain();
    loop.advance(80);
    updater->checkForUpdates(nullptr);
    loop.advance(20);
    EXPECT_EQ(fetches->addresses.size(), 1);
    answer("");
    EXPECT_EQ(takeShown(), Shown{upToDate});
    advance(2 * hour, "");
    EXPECT_EQ(fetches->addresses.size(), 2) << "made up for";
    EXPECT_EQ(takeShown(), Shown{});
}

TEST_F(DailyChecksTest, WithoutAFeedItNeverWakes) {
    for (const char* bad : {"", "http://example.org/"}) {
        bundle.texts["SUFeedURL"] = bad;
        updater->start();
        loop.drain();
        EXPECT_EQ(loop.timerCount(), 0);
        updater->checkForUpdates(nullptr);
        EXPECT_EQ(loop.timerCount(), 0);
    }
    delegate->address = address;
    checkAndAnswer("");
    EXPECT_EQ(loop.timerCount(), 1) << "it has one now";
    delegate->address = std::nullopt;
    loop.advance(2 * hour);
    EXPECT_EQ(loop.timerCount(), 0) << "and no more";
    EXPECT_EQ(fetches->addresses.size(), 1);
}

TEST_F(DailyChecksTest, UnlessStartedItChecksOnlyWhenAsked) {
    loop.drain();
    checkAndAnswer("");
    EXPECT_EQ(loop.timerCount(), 0);
}

} // namespace
} // namespace quillon
