// One step of the volume: how far, by which means, and what is reported.

#include "Tools/Edges/VolumeControlManager.h"
#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Strings = std::vector<std::string>;

struct VolumeStepTest : testing::Test, ToolBench {
    std::vector<float> levels;
    std::vector<double> times; // of the levels
    std::shared_ptr<VolumeControlManager> manager = make();

    std::shared_ptr<VolumeControlManager> make() {
        auto made = start<VolumeControlManager>();
        made->setLevelReport([this](float percent) {
            levels.push_back(percent);
            times.push_back(desktop.runLoop.uptime());
        });
        actions.clear();
        return made;
    }
    SimulatedAudioHardware::OutputDevice& device() { return *desktop.audio.device; }

    void step(bool up, double strength = 1) {
        manager->setVolumeSteps(strength);
        manager->adjustVolume(up);
    }
    void expectVolume(double volume) { EXPECT_FLOAT_EQ(device().volume, volume); }
    void expectLevels(const std::vector<float>& expected) {
        ASSERT_EQ(levels.size(), expected.size());
        for (std::size_t i = 0; i < levels.size(); ++i) {
            EXPECT_FLOAT_EQ(levels[i], expected[i]);
        }
    }
};

TEST_F(VolumeStepTest, IsAQuarterPercentTimesTheStrength) {
    const std::vector<std::pair<double, double>> cases{
        {1, 0.0025}, {10, 0.025},   {0, 0.0025},   {-3, 0.0025},
        {12, 0.025}, {4.4, 0.0100}, {4.5, 0.0125}, {1e18, 0.025},
    };
    for (const auto& [strength, delta] : cases) {
        SCOPED_TRACE(strength);
        device().volume = 0.5;
        step(true, strength);
        expectVolume(0.5 + delta);
        device().volume = 0.5;
        step(false, strength);
        expectVolume(0.5 - delta);
    }
}

TEST_F(VolumeStepTest, ReportsWhatTheDeviceThenReads) {
    step(true, 10);
    expectLevels({52.5F});
    device().step = 0.01;
    step(false, 10);
    EXPECT_EQ(take("volume"), (Strings{"0.525", "0.5"}));
    expectLevels({52.5F, 50});
}

TEST_F(VolumeStepTest, AtALimitOnlyReports) {
    for (const auto& [volume, up, level] :
         {std::tuple{1.0, true, 100.0F}, std::tuple{0.999, true, 99.9F},
          std::tuple{0.0005, false, 0.05F}, std::tuple{0.001, false, 0.1F},
          std::tuple{0.0, false, 0.0F}}) {
        SCOPED_TRACE(volume);
        device().volume = volume;
        levels.clear();
        step(up);
        desktop.runLoop.advance(1);
        expectLevels({level});
        EXPECT_TRUE(actions.empty()) << actions.front();
    }
}

TEST_F(VolumeStepTest, StopsExactlyAtTheLimits) {
    device().volume = 0.99;
    step(true, 10);
    device().volume = 0.01;
    step(false, 10);
    EXPECT_EQ(take("volume"), (Strings{"1", "0"}));
    expectLevels({100, 0});
}

TEST_F(VolumeStepTest, UpUnmutesFirstAndDownLeavesMuted) {
    device().muted = true;
    step(false);
    EXPECT_TRUE(device().muted);
    step(true);
    EXPECT_FALSE(device().muted);
    EXPECT_EQ(actions, (Strings{"volume 0.4975", "unmute ", "volume 0.5"}));
}

TEST_F(VolumeStepTest, UpUnmutesAlsoAtFullVolume) {
    device().muted = true;
    device().volume = 1;
    step(true);
    EXPECT_EQ(actions, Strings{"unmute "});
    expectLevels({100});
}

TEST_F(VolumeStepTest, ADeviceThatRefusesGetsTheKeys) {
    device().readOnly = true;
    step(true, 8);
    EXPECT_TRUE(actions.empty()) << "all keys come over the main queue";
    desktop.runLoop.drain();
    advance(0);
    EXPECT_EQ(actions, Strings{"key 0"});
    advance(0.007);
    EXPECT_EQ(count("key 0"), 1);
    advance(0.001);
    EXPECT_EQ(count("key 0"), 2);
    advance(0.024);
    EXPECT_EQ(count("key 0"), 5);
    EXPECT_TRUE(levels.empty());
    device().volume = 0.75; // what the keys have brought about
    advance(1);
    EXPECT_EQ(count("key 0"), 5);
    expectLevels({75});
    EXPECT_EQ(times, std::vector<double>{0.11});
}

TEST_F(VolumeStepTest, OneKeyForTheSmallestStep) {
    device().readOnly = true;
    step(false);
    desktop.runLoop.drain();
    advance(1);
    EXPECT_EQ(actions, Strings{"key 1"});
    EXPECT_EQ(times, std::vector<double>{0.078});
}

TEST_F(VolumeStepTest, ADeviceThatMovesByLessThanAFifthGetsTheKeysToo) {
    device().step = 0.1;
    step(true, 10);
    desktop.runLoop.drain();
    advance(1);
    EXPECT_EQ(actions, (Strings{"volume 0.5", "key 0", "key 0", "key 0", "key 0", "key 0"}));

    // Of the 0.025 that were asked for: a fifth but a little, and a little more.
    actions.clear();
    device() = {.volume = 0.5, .step = 0.50475};
    step(true, 10);
    desktop.runLoop.drain();
    advance(0);
    EXPECT_EQ(actions, (Strings{"volume 0.50475", "key 0"}));
    advance(1);
    actions.clear();
    device() = {.volume = 0.5, .step = 0.50525};
    step(true, 10);
    desktop.runLoop.drain();
    advance(1);
    EXPECT_EQ(actions, Strings{"volume 0.50525"});
}

TEST_F(VolumeStepTest, WithoutADeviceTheKeysAreTriedAndNothingIsReported) {
    desktop.audio.device.reset();
    step(true);
    desktop.runLoop.drain();
    advance(1);
    EXPECT_EQ(actions, Strings{"key 0"});
    expectLevels({0});
    step(false);
    expectLevels({0, 0}); // nothing reads as silence, which is the lower limit
}

TEST_F(VolumeStepTest, WhatIsLeftToDoGoesWithTheManager) {
    device().readOnly = true;
    step(true, 10);
    desktop.runLoop.drain();
    advance(0.008);
    EXPECT_EQ(count("key 0"), 2);
    manager.reset();
    advance(1);
    EXPECT_EQ(count("key 0"), 2);
    EXPECT_TRUE(levels.empty());
}

} // namespace
} // namespace quillon
