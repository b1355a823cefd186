#include "PulseTest.h"

#include <array>
#include <cmath>
#include <limits>

namespace quillon {
namespace {

constexpr std::uint32_t whole = PA_VOLUME_NORM;

class RunningServer : public PulseTest {
  protected:
    RunningServer() { server_.start({"speakers", "phones"}); }
};

TEST_F(RunningServer, EveryStepIsExactToAUnitBothWays) {
    const auto device = defaultDevice();
    ASSERT_TRUE(device);
    for (int i = -400; i <= 400; ++i) {
        const float wanted = static_cast<float>(400 - std::abs(i)) * 0.0025F;
        ASSERT_TRUE(setVolume(*device, wanted));
        ASSERT_NEAR(volume(*device).value_or(-1), wanted, 1.0 / whole);
        if (i % 40 == 0) {
            ASSERT_EQ(server_.volumes()[0], std::lround(static_cast<double>(wanted) * whole));
        }
    }
}

TEST_F(RunningServer, BothVolumesAreTheSame) {
    const auto device = defaultDevice();
    ASSERT_TRUE(setAudioProperty(audio_, *device, volumeScalarAddress, 0.25F));
    EXPECT_EQ(volume(*device), 0.25F);
    EXPECT_EQ(audioProperty<float>(audio_, *device, volumeScalarAddress), 0.25F);
}

TEST_F(RunningServer, AChangeByOthersIsSeenAtOnce) {
    const auto device = defaultDevice();
    server_.pactl("set-sink-volume speakers 19661");
    EXPECT_EQ(volume(*device), 19661 / 65536.0F);
}

TEST_F(RunningServer, MuteIsReadAndWritten) {
    const auto device = defaultDevice();
    const auto mute = [&] { return audioProperty<std::uint32_t>(audio_, *device, muteAddress); };
    EXPECT_EQ(mute(), 0U);
    server_.pactl("set-sink-mute speakers 1");
    EXPECT_EQ(mute(), 1U);
    ASSERT_TRUE(setAudioProperty(audio_, *device, muteAddress, std::uint32_t{0}));
    EXPECT_FALSE(server_.isMuted());
    ASSERT_TRUE(setAudioProperty(audio_, *device, muteAddress, std::uint32_t{7}));
    EXPECT_TRUE(server_.isMuted());
    EXPECT_EQ(server_.volumes()[0], whole);
}

TEST_F(RunningServer, TheBalanceIsKeptThroughSilence) {
    server_.pactl("set-sink-volume speakers 60000 20000");
    ASSERT_TRUE(setVolume(0));
    EXPECT_EQ(server_.volumes(), (std::vector<std::uint32_t>{0, 0}));
    ASSERT_TRUE(setVolume(0.5F));
    EXPECT_EQ(server_.volumes(), (std::vector<std::uint32_t>{32768, 10923}));
}

TEST_F(RunningServer, TheBalanceIsForgottenWhenSomebodyRaisesAndSilencesTheSinkMeanwhile) {
    server_.pactl("set-sink-volume speakers 60000 20000");
    ASSERT_TRUE(setVolume(0));
    server_.pactl("set-sink-volume speakers 40000 40000");
    server_.pactl("set-sink-volume speakers 0 0");
    ASSERT_TRUE(setVolume(0.5F));
    EXPECT_EQ(server_.volumes(), (std::vector<std::uint32_t>{32768, 32768}));
}

TEST_F(RunningServer, SilenceThatIsOnlyMutedKeepsTheBalance) {
    server_.pactl("set-sink-volume speakers 60000 20000");
    ASSERT_TRUE(setVolume(0));
    server_.pactl("set-sink-mute speakers 1");
    ASSERT_TRUE(setVolume(0.5F));
    EXPECT_EQ(server_.volumes(), (std::vector<std::uint32_t>{32768, 10923}));
}

TEST_F(RunningServer, AboveTheWholeAStepDownIsAStep) {
    server_.pactl("set-sink-volume speakers 85197");
    EXPECT_EQ(volume(), 1.0F);
    ASSERT_TRUE(setVolume(0.9975F));
    EXPECT_EQ(volume(), 0.9975F);
    EXPECT_EQ(server_.volumes()[0], 85197 - 164);
}

TEST_F(RunningServer, AnotherDefaultDeviceIsFollowedAndTheFirstOneStaysValid) {
    const auto speakers = defaultDevice();
    server_.pactl("set-default-sink phones");
    const auto phones = defaultDevice();
    ASSERT_TRUE(speakers && phones);
    EXPECT_NE(speakers, phones);
    ASSERT_TRUE(setVolume(*speakers, 0.25F));
    ASSERT_TRUE(setVolume(*phones, 0.75F));
    EXPECT_EQ(server_.volumes("speakers")[0], whole / 4);
    EXPECT_EQ(server_.volumes("phones")[0], whole / 4 * 3);
}

TEST_F(RunningServer, CallsOnADeviceThatIsGoneFail) {
    const auto speakers = defaultDevice();
    ASSERT_TRUE(speakers);
    const std::string modules = server_.pactl("list short modules");
    const auto line = modules.rfind('\n', modules.find("sink_name=speakers")) + 1;
    server_.pactl("unload-module " + modules.substr(line, modules.find('\t', line) - line));
    EXPECT_FALSE(volume(*speakers));
    EXPECT_FALSE(setVolume(*speakers, 0.5F));
    EXPECT_FALSE(setAudioProperty(audio_, *speakers, muteAddress, std::uint32_t{1}));
    EXPECT_FALSE(audio_.isPropertySettable(*speakers, virtualMainVolumeAddress));
    EXPECT_NE(defaultDevice(), speakers);
    EXPECT_TRUE(setVolume(0.5F));
    EXPECT_EQ(server_.volumes("phones")[0], whole / 2);
}

TEST_F(RunningServer, AllControlsOfADeviceCanBeSet) {
    const auto device = defaultDevice();
    for (const auto& address : {virtualMainVolumeAddress, volumeScalarAddress, muteAddress}) {
        EXPECT_EQ(audio_.isPropertySettable(*device, address), true);
        EXPECT_FALSE(audio_.isPropertySettable(*device + 9, address));
        EXPECT_FALSE(audio_.isPropertySettable(audioSystemObject, address));
    }
}

TEST_F(RunningServer, NothingElseIsAProperty) {
    const auto device = defaultDevice();
    for (AudioPropertyAddress address :
         {virtualMainVolumeAddress, volumeScalarAddress, muteAddress}) {
        EXPECT_FALSE(audioProperty<std::uint32_t>(audio_, audioSystemObject, address));
        const auto right = address;
        address.element = 1;
        EXPECT_FALSE(audioProperty<float>(audio_, *device, address));
        EXPECT_FALSE(setAudioProperty(audio_, *device, address, 0.5F));
        EXPECT_FALSE(audio_.isPropertySettable(*device, address));
        address = right;
        address.scope = audioScopeGlobal;
        EXPECT_FALSE(audioProperty<float>(audio_, *device, address));
        EXPECT_FALSE(audioProperty<double>(audio_, *device, right));
        EXPECT_FALSE(setAudioProperty(audio_, *device, right, 0.5));
        EXPECT_FALSE(setAudioProperty(audio_, *device, right, std::uint16_t{0}));
    }
    EXPECT_FALSE(audioProperty<float>(audio_, *device, defaultOutputDeviceAddress));
    EXPECT_FALSE(audioProperty<double>(audio_, audioSystemObject, defaultOutputDeviceAddress));
    EXPECT_FALSE(setAudioProperty(audio_, audioSystemObject, defaultOutputDeviceAddress, *device));
    EXPECT_FALSE(setVolume(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(server_.volumes(), (std::vector<std::uint32_t>{whole, whole}));
    EXPECT_FALSE(server_.isMuted());
}

} // namespace
} // namespace quillon
