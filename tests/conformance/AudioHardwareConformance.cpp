#include "Conformance.h"

#include <array>

namespace quillon {
namespace {

constexpr double exact = 1.0 / 65536; // the steps of a sound server

class OutputDevice : public Conformance {
  protected:
    OutputDevice() : Conformance({.hasSound = true}) {}

    void SetUp() override {
        const auto found =
            audioProperty<AudioObjectId>(audio(), audioSystemObject, defaultOutputDeviceAddress);
        ASSERT_TRUE(found);
        device = *found;
        ASSERT_NE(device, 0U);
    }

    [[nodiscard]] AudioHardware& audio() const { return platform().audio; }

    AudioObjectId device = 0;
};

TEST_F(OutputDevice, ItsVolumeIsReadAndWritten) {
    world->setOutputVolume(0.25);
    const auto volume = audioProperty<float>(audio(), device, virtualMainVolumeAddress);
    ASSERT_TRUE(volume);
    EXPECT_NEAR(*volume, 0.25, exact);
    ASSERT_TRUE(setAudioProperty(audio(), device, virtualMainVolumeAddress, 0.75F));
    EXPECT_NEAR(world->outputVolume(), 0.75, exact);
    EXPECT_NEAR(audioProperty<float>(audio(), device, virtualMainVolumeAddress).value_or(-1), 0.75,
                exact);
    EXPECT_FALSE(world->isOutputMuted());
}

TEST_F(OutputDevice, ItsMuteIsReadAndWritten) {
    const auto mute = [this] { return audioProperty<std::uint32_t>(audio(), device, muteAddress); };
    EXPECT_EQ(mute(), 0U);
    world->setOutputMuted(true);
    EXPECT_EQ(mute(), 1U);
    ASSERT_TRUE(setAudioProperty(audio(), device, muteAddress, std::uint32_t{0}));
    EXPECT_FALSE(world->isOutputMuted());
    ASSERT_TRUE(setAudioProperty(audio(), device, muteAddress, std::uint32_t{1}));
    EXPECT_TRUE(world->isOutputMuted());
}

TEST_F(OutputDevice, SaysWhatCanBeSet) {
    EXPECT_EQ(audio().isPropertySettable(device, virtualMainVolumeAddress), true);
    EXPECT_EQ(audio().isPropertySettable(device, muteAddress), true);
    EXPECT_EQ(audio().isPropertySettable(device, {fourCharCode("none"), audioScopeOutput, 0}),
              std::nullopt);
}

TEST_F(OutputDevice, ValuesOfAnotherSizeAreErrors) {
    std::array<std::byte, 3> small{};
    EXPECT_FALSE(audio().getPropertyData(device, virtualMainVolumeAddress, small));
    EXPECT_FALSE(audio().setPropertyData(device, virtualMainVolumeAddress, small));
    EXPECT_FALSE(audio().getPropertyData(device, muteAddress, small));
    EXPECT_FALSE(audio().getPropertyData(audioSystemObject, defaultOutputDeviceAddress, small));
    std::array<std::byte, 8> large{};
    EXPECT_FALSE(audio().getPropertyData(device, virtualMainVolumeAddress, large));
    EXPECT_FALSE(audio().getPropertyData(device, muteAddress, large));
    EXPECT_FALSE(audio().getPropertyData(audioSystemObject, defaultOutputDeviceAddress, large));
}

TEST_F(OutputDevice, OtherObjectsAndPropertiesAreErrors) {
    const AudioObjectId other = device + 1000;
    EXPECT_FALSE(audioProperty<float>(audio(), other, virtualMainVolumeAddress));
    EXPECT_FALSE(setAudioProperty(audio(), other, virtualMainVolumeAddress, 0.5F));
    EXPECT_EQ(audio().isPropertySettable(other, virtualMainVolumeAddress), std::nullopt);
    EXPECT_FALSE(
        audioProperty<float>(audio(), device, {fourCharCode("none"), audioScopeOutput, 0}));
}

class NoOutputDevice : public Conformance {};

TEST_F(NoOutputDevice, NothingCanBeReadOrWritten) {
    // Some systems name the device that is none instead of failing.
    const auto device = audioProperty<AudioObjectId>(platform().audio, audioSystemObject,
                                                     defaultOutputDeviceAddress)
                            .value_or(0);
    EXPECT_EQ(device, 0U);
    for (const AudioObjectId gone : {device, AudioObjectId{42}}) {
        EXPECT_FALSE(audioProperty<float>(platform().audio, gone, virtualMainVolumeAddress));
        EXPECT_FALSE(setAudioProperty(platform().audio, gone, virtualMainVolumeAddress, 0.5F));
        EXPECT_FALSE(setAudioProperty(platform().audio, gone, muteAddress, std::uint32_t{1}));
    }
}

} // namespace
} // namespace quillon
