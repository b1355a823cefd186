#include "Platform/Linux/updates/UpdateSchedule.h"

#include "Platform/Linux/session/RecordingDiagnostics.h"
#include "Platform/Simulated/SimulatedUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;

/// A virtual run loop whose wall clock can be set, and which counts the wakeups of timers.
class SettableClock final : public RunLoop {
  public:
    TimerRef asyncAfter(double seconds, std::function<void()> work) override {
        return loop.asyncAfter(seconds, counted(std::move(work)));
    }
    TimerRef scheduleRepeating(double seconds, std::function<void()> work) override {
        return loop.scheduleRepeating(seconds, counted(std::move(work)));
    }
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string_view label) override {
        return loop.makeSerialQueue(label);
    }
    [[nodiscard]] std::chrono::system_clock::time_point now() const override {
        return loop.now() + std::chrono::microseconds(static_cast<std::int64_t>(offset * 1e6));
    }
    [[nodiscard]] double uptime() const override { return loop.uptime(); }

    VirtualRunLoop loop;
    double offset = 1.7e9;
    int wakeups = 0;

  protected:
    void enqueueMain(std::unique_ptr<Work> work) override {
        loop.async([held = std::shared_ptr<Work>(std::move(work))] { held->run(); });
    }
    void enqueueBackground(std::unique_ptr<Work> work) override { enqueueMain(std::move(work)); }

  private:
    std::function<void()> counted(std::function<void()> work) {
        return [this, held = std::move(work)] {
            ++wakeups;
            held();
        };
    }
};

struct UpdateScheduleTest : testing::Test {
    static constexpr const char* key = "SULastCheckTime";

    [[nodiscard]] double wall() const {
        return std::chrono::duration<double>(clock.now().time_since_epoch()).count();
    }
    void store(double time) { defaults.set(key, time); }
    [[nodiscard]] double stored() { return std::get<double>(*defaults.object(key)); }

    /// How many checks begin while so much time passes.
    int checksWithin(double seconds) {
        const std::size_t before = checks.size();
        clock.loop.advance(seconds);
        return static_cast<int>(checks.size() - before);
    }

    SettableClock clock;
    SimulatedUserDefaults defaults;
    RecordingDiagnostics diagnostics;
    std::vector<double> checks; // uptimes
    bool mayCheck = true;
    std::optional<UpdateSchedule> schedule;

    UpdateScheduleTest() {
        schedule.emplace(clock, defaults, diagnostics, [this] {
            if (mayCheck) {
                checks.push_back(clock.uptime());
            }
            return mayCheck;
        });
    }
};

TEST_F(UpdateScheduleTest, NothingHappensBeforeItIsStarted) {
    EXPECT_EQ(checksWithin(3 * day), 0);
    EXPECT_EQ(clock.wakeups, 0);
}

TEST_F(UpdateScheduleTest, FirstAfterAMinuteThenOnceADay) {
    schedule->start();
    schedule->start();
    EXPECT_EQ(checksWithin(minute), 0);
    EXPECT_EQ(checksWithin(minute), 1);
    EXPECT_DOUBLE_EQ(stored(), wall() - clock.uptime() + checks[0]);
    EXPECT_EQ(checksWithin(10 * day), 9);
    for (std::size_t i = 1; i < checks.size(); ++i) {
        EXPECT_GE(checks[i] - checks[i - 1], day);
        EXPECT_LE(checks[i] - checks[i - 1], day + 2 * hour);
    }
    EXPECT_LE(clock.wakeups, 10 * 24);
}

TEST_F(UpdateScheduleTest, TheDayGoesOnWhileTheProgramDoesNotRun) {
    store(wall() - 23 * hour);
    schedule->start();
    EXPECT_EQ(checksWithin(50 * minute), 0);
    EXPECT_EQ(checksWithin(2 * hour), 1);
}

TEST_F(UpdateScheduleTest, AfterALongSleepItChecksWithinTheHour) {
    schedule->start();
    EXPECT_EQ(checksWithin(2 * minute), 1);
    clock.offset += 3 * day; // timers and uptime stand still
    EXPECT_EQ(checksWithin(UpdateSchedule::interval), 1);
    EXPECT_EQ(checksWithin(20 * hour), 0);
}

TEST_F(UpdateScheduleTest, AClockThatIsSetBackDelaysNothing) {
    schedule->start();
    EXPECT_EQ(checksWithin(2 * minute), 1);
    clock.offset -= 365 * day;
    EXPECT_EQ(checksWithin(2 * hour), 1);
    EXPECT_EQ(checksWithin(20 * hour), 0);
    EXPECT_EQ(checksWithin(6 * hour), 1);
}

TEST_F(UpdateScheduleTest, ASmallCorrectionIsNoReason) {
    store(wall() + 10 * minute);
    schedule->start();
    EXPECT_EQ(checksWithin(23 * hour), 0);
    EXPECT_EQ(checksWithin(3 * hour), 1);
}

TEST_F(UpdateScheduleTest, AClockThatStandsStillDelaysNothing) {
    schedule->start();
    EXPECT_EQ(checksWithin(2 * minute), 1);
    for (int i = 0; i < 60; ++i) {
        clock.loop.advance(hour);
        clock.offset -= hour;
    }
    EXPECT_EQ(checks.size(), 3);
}

TEST_F(UpdateScheduleTest, AClockThatJumpsAllTheTimeCostsACheckAnHour) {
    schedule->start();
    for (int i = 0; i < 24 * 60; ++i) {
        clock.loop.advance(minute);
        clock.offset += (i % 2 == 0 ? 1 : -1) * 100 * day;
    }
    EXPECT_LE(checks.size(), 24);
}

TEST_F(UpdateScheduleTest, WhatCouldNotBeginIsTriedAgain) {
    schedule->start();
    mayCheck = false;
    EXPECT_EQ(checksWithin(2 * minute), 0);
    EXPECT_FALSE(defaults.object(key));
    mayCheck = true;
    EXPECT_EQ(checksWithin(2 * hour), 1);
}

TEST_F(UpdateScheduleTest, AStoredTimeThatMakesNoSenseIsNone) {
    for (const DefaultsObject& junk :
         {DefaultsObject("yesterday"), DefaultsObject(1e300), DefaultsObject(-1e17)}) {
        defaults.set(key, junk);
        schedule->start();
        EXPECT_EQ(checksWithin(2 * hour), 1);
        EXPECT_NEAR(stored(), wall(), 2 * hour);
        schedule->stop();
    }
}

TEST_F(UpdateScheduleTest, StoppedItWakesNobody) {
    schedule->start();
    clock.loop.advance(2 * minute);
    schedule->stop();
    EXPECT_EQ(clock.loop.timerCount(), 0);
    schedule->start();
    EXPECT_EQ(clock.loop.timerCount(), 1);
    schedule.reset();
    EXPECT_EQ(clock.loop.timerCount(), 0);
}

} // namespace
} // namespace quillon
