#include "Platform/Linux/audio/SinkVolumes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>

namespace quillon {
namespace {

using namespace std::chrono_literals;

constexpr pa_volume_t whole = PA_VOLUME_NORM;

OutputSink sinkWith(std::initializer_list<pa_volume_t> channels, std::uint32_t index = 3) {
    OutputSink sink{.index = index};
    for (const pa_volume_t channel : channels) {
        sink.volume.values[sink.volume.channels++] = channel;
    }
    return sink;
}

/// A sink that becomes what it is told, and a tool that steps it.
class SinkVolumesTest : public testing::Test {
  protected:
    float read() const { return volumes_.reading(sink_, now_); }

    bool write(float volume) {
        const auto channels = volumes_.change(sink_, volume, now_);
        if (channels) {
            sink_.volume = *channels;
        }
        return channels.has_value();
    }

    /// Answers by how much the reading follows at once.
    float step(float delta) {
        const float current = read();
        write(std::clamp(current + delta, 0.0F, 1.0F));
        const float moved = read() - current;
        now_ += 85ms;
        return moved;
    }

    pa_volume_t left() const { return sink_.volume.values[0]; }
    pa_volume_t right() const { return sink_.volume.values[1]; }

    SinkVolumes volumes_;
    SinkVolumes::Time now_{};
    OutputSink sink_ = sinkWith({whole / 2, whole / 2});
};

TEST_F(SinkVolumesTest, IsThatOfTheLoudestChannel) {
    sink_ = sinkWith({whole / 4, whole / 2});
    EXPECT_EQ(read(), 0.5F);
}

TEST_F(SinkVolumesTest, EveryStepIsExactToAUnit) {
    for (int i = 0; i <= 400; ++i) {
        const float volume = static_cast<float>(i) * 0.0025F;
        write(volume);
        EXPECT_EQ(left(), std::lround(static_cast<double>(volume) * whole));
        EXPECT_NEAR(read(), volume, 0.5 / whole);
    }
}

TEST_F(SinkVolumesTest, NothingIsWrittenThatIsSoAlready) { EXPECT_FALSE(write(0.5F)); }

TEST_F(SinkVolumesTest, WhatIsOutOfRangeIsBroughtIntoIt) {
    write(2.0F);
    EXPECT_EQ(left(), whole);
    write(-std::numeric_limits<float>::infinity());
    EXPECT_EQ(left(), PA_VOLUME_MUTED);
}

TEST_F(SinkVolumesTest, TheBalanceSurvivesManySteps) {
    sink_ = sinkWith({whole, whole / 3});
    for (int i = 0; i < 395; ++i) {
        step(-0.0025F);
    }
    for (int i = 0; i < 395; ++i) {
        step(0.0025F);
    }
    EXPECT_NEAR(right(), static_cast<double>(left()) / 3, 1);
}

TEST_F(SinkVolumesTest, TheBalanceSurvivesSilence) {
    sink_ = sinkWith({whole * 6 / 10, whole * 3 / 10});
    write(0);
    EXPECT_EQ(left() + right(), 0U);
    EXPECT_TRUE(volumes_.isSilenced(sink_.index));
    write(0.5F);
    EXPECT_EQ(left(), whole / 2);
    EXPECT_NEAR(right(), whole / 4, 1);
    EXPECT_FALSE(volumes_.isSilenced(sink_.index));
}

TEST_F(SinkVolumesTest, SilenceInAllChannelsAlikeKeepsNothing) {
    write(0);
    EXPECT_FALSE(volumes_.isSilenced(sink_.index));
}

TEST_F(SinkVolumesTest, ABalanceThatSomebodyElseSetsCounts) {
    sink_ = sinkWith({whole, whole / 2});
    write(0.5F);
    sink_ = sinkWith({whole / 4, whole / 2});
    write(0.25F);
    EXPECT_EQ(left(), whole / 8);
    EXPECT_EQ(right(), whole / 4);
}

TEST_F(SinkVolumesTest, ABalanceIsForgottenWhenSomebodyElseRaisesASilentOutput) {
    sink_ = sinkWith({whole, whole / 2});
    write(0);
    volumes_.changed(sink_); // muted or suspended, say
    EXPECT_TRUE(volumes_.isSilenced(sink_.index));
    volumes_.changed(sinkWith({whole / 2, whole / 2}));
    EXPECT_FALSE(volumes_.isSilenced(sink_.index));
    write(0.5F);
    EXPECT_EQ(right(), whole / 2);
}

TEST_F(SinkVolumesTest, ASinkKeepsItsBalanceForItself) {
    sink_ = sinkWith({whole, whole / 2});
    write(0);
    sink_ = sinkWith({0, 0}, 4);
    write(0.5F);
    EXPECT_EQ(right(), whole / 2);
}

TEST_F(SinkVolumesTest, AboveTheWholeItReadsAsTheWhole) {
    sink_ = sinkWith({whole * 13 / 10, whole});
    EXPECT_EQ(read(), 1.0F);
}

TEST_F(SinkVolumesTest, ScrollingDownFromAboveTheWholeIsEven) {
    for (const float delta : {0.0025F, 0.01F, 0.025F}) {
        for (const double start : {1.0024, 1.0026, 1.3, 1.53}) {
            sink_ = sinkWith({static_cast<pa_volume_t>(start * whole), whole / 2});
            const double balance = static_cast<double>(right()) / left();
            while (left() > 0) {
                const pa_volume_t before = left();
                const float moved = step(-delta);
                if (read() > 0.001F) {
                    EXPECT_NEAR(before - left(), static_cast<double>(delta) * whole, 1.5) << before;
                    EXPECT_LT(moved, -std::max(delta * 0.2F, 0.0001F)) << before;
                }
                ASSERT_LT(left(), before);
                ASSERT_NEAR(right(), left() * balance, 1);
            }
        }
    }
}

TEST_F(SinkVolumesTest, AStepDownFromAboveReadsAsWrittenForAMomentOnly) {
    sink_ = sinkWith({whole * 13 / 10});
    write(0.9975F);
    EXPECT_EQ(read(), 0.9975F);
    now_ += SinkVolumes::stepReads;
    EXPECT_EQ(read(), 1.0F);
}

TEST_F(SinkVolumesTest, AStepDownFromAboveNoLongerReadsAsWrittenWhenSomebodyElseChangesIt) {
    sink_ = sinkWith({whole * 13 / 10});
    write(0.9975F);
    sink_ = sinkWith({whole * 12 / 10});
    EXPECT_EQ(read(), 1.0F);
}

TEST_F(SinkVolumesTest, TwoThatStepDownAtOnceMakeOneStep) {
    sink_ = sinkWith({whole * 13 / 10});
    write(0.9975F);
    EXPECT_FALSE(write(0.9975F));
    EXPECT_EQ(read(), 0.9975F);
}

TEST_F(SinkVolumesTest, TheWholeLeavesWhatIsAboveItAlone) {
    sink_ = sinkWith({whole * 13 / 10});
    EXPECT_FALSE(write(1.0F));
}

TEST_F(SinkVolumesTest, WhatIsNoStepIsTakenAsItIsAlsoFromAbove) {
    sink_ = sinkWith({whole * 13 / 10});
    write(0.5F);
    EXPECT_EQ(left(), whole / 2);
    EXPECT_EQ(read(), 0.5F);
}

TEST_F(SinkVolumesTest, OnlySomeSinksHaveAVolume) {
    EXPECT_TRUE(SinkVolumes::hasVolume(sink_));
    EXPECT_FALSE(SinkVolumes::hasVolume(OutputSink{}));
}

} // namespace
} // namespace quillon
