#include "Platform/MacOS/MacAudioHardware.h"

#include "ServicesTest.h"

#include <AudioToolbox/AudioToolbox.h>

namespace quillon {
namespace {

using fakes::fakeAudio;
using Place = fakes::FakeAudio::Place;

constexpr AudioObjectId device = 73;
constexpr Place virtualVolume{device, kAudioHardwareServiceDeviceProperty_VirtualMainVolume,
                              kAudioObjectPropertyScopeOutput, kAudioObjectPropertyElementMain};
constexpr Place mute{device, kAudioDevicePropertyMute, kAudioObjectPropertyScopeOutput,
                     kAudioObjectPropertyElementMain};

class MacAudioHardwareTest : public ServicesTest {
  protected:
    static void expectCall(const char* function, const Place& place, UInt32 dataSize) {
        const auto calls = fakeAudio().calls();
        ASSERT_FALSE(calls.empty());
        EXPECT_EQ(calls.back().function, function);
        EXPECT_EQ(calls.back().place, place);
        EXPECT_EQ(calls.back().qualifierSize, 0U);
        EXPECT_FALSE(calls.back().hasQualifier);
        EXPECT_EQ(calls.back().dataSize, dataSize);
    }

    MacAudioHardware audio;
};

TEST_F(MacAudioHardwareTest, DefaultDeviceIsAPropertyOfTheSystem) {
    const Place place{1, 0x644F7574, 0x676C6F62, 0}; // dOut, glob
    fakeAudio().set(place, device);
    EXPECT_EQ(audioProperty<AudioObjectId>(audio, audioSystemObject, defaultOutputDeviceAddress),
              device);
    expectCall("AudioObjectGetPropertyData", place, 4);
    EXPECT_EQ(place.object, static_cast<AudioObjectID>(kAudioObjectSystemObject));
    EXPECT_EQ(place.selector, static_cast<UInt32>(kAudioHardwarePropertyDefaultOutputDevice));
    EXPECT_EQ(place.scope, static_cast<UInt32>(kAudioObjectPropertyScopeGlobal));
}

TEST_F(MacAudioHardwareTest, VolumesAndMuteAreThoseOfTheOutputAsAWhole) {
    const auto expect = [this](const AudioPropertyAddress& address, const Place& place) {
        fakeAudio().set(place, 0.25F);
        EXPECT_EQ(audioProperty<float>(audio, device, address), 0.25F);
        expectCall("AudioObjectGetPropertyData", place, 4);
        EXPECT_EQ(audio.isPropertySettable(device, address), true);
        expectCall("AudioObjectIsPropertySettable", place, 0);
        EXPECT_TRUE(setAudioProperty(audio, device, address, 0.5F));
        expectCall("AudioObjectSetPropertyData", place, 4);
        EXPECT_EQ(fakeAudio().value<float>(place), 0.5F);
    };
    expect(virtualMainVolumeAddress, virtualVolume);
    expect(volumeScalarAddress,
           {device, kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeOutput, 0});
    EXPECT_EQ(virtualVolume.selector, 0x766D7663U);
    EXPECT_EQ(virtualVolume.scope, 0x6F757470U);
}

TEST_F(MacAudioHardwareTest, MuteIsANumber) {
    fakeAudio().set(mute, std::uint32_t{1});
    EXPECT_EQ(audioProperty<std::uint32_t>(audio, device, muteAddress), 1U);
    expectCall("AudioObjectGetPropertyData", mute, 4);
    EXPECT_TRUE(setAudioProperty(audio, device, muteAddress, std::uint32_t{0}));
    expectCall("AudioObjectSetPropertyData", mute, 4);
    EXPECT_EQ(fakeAudio().value<std::uint32_t>(mute), 0U);
}

TEST_F(MacAudioHardwareTest, WhatThereIsNotFails) {
    EXPECT_EQ(audioProperty<float>(audio, device, virtualMainVolumeAddress), std::nullopt);
    EXPECT_EQ(audio.isPropertySettable(device, virtualMainVolumeAddress), std::nullopt);
    EXPECT_FALSE(setAudioProperty(audio, device, virtualMainVolumeAddress, 0.5F));
    EXPECT_EQ(fakeAudio().calls().size(), 3U);
}

TEST_F(MacAudioHardwareTest, EveryErrorFails) {
    fakeAudio().set(virtualVolume, 0.25F);
    auto property = *fakeAudio().find(virtualVolume);
    property.readError = kAudioHardwareBadObjectError;
    property.settableError = kAudioHardwareBadObjectError;
    property.writeError = kAudioHardwareUnspecifiedError;
    fakeAudio().put(virtualVolume, property);
    EXPECT_EQ(audioProperty<float>(audio, device, virtualMainVolumeAddress), std::nullopt);
    EXPECT_EQ(audio.isPropertySettable(device, virtualMainVolumeAddress), std::nullopt);
    EXPECT_FALSE(setAudioProperty(audio, device, virtualMainVolumeAddress, 0.5F));
    EXPECT_EQ(fakeAudio().value<float>(virtualVolume), 0.25F);
}

TEST_F(MacAudioHardwareTest, WhatIsNotSettableSaysSo) {
    fakeAudio().set(mute, std::uint32_t{1}, false);
    EXPECT_EQ(audio.isPropertySettable(device, muteAddress), false);
    EXPECT_FALSE(setAudioProperty(audio, device, muteAddress, std::uint32_t{0}));
    EXPECT_EQ(fakeAudio().value<std::uint32_t>(mute), 1U);
}

TEST_F(MacAudioHardwareTest, PropertyOfAnotherSizeFails) {
    fakeAudio().set(virtualVolume, std::uint16_t{1});
    EXPECT_EQ(audioProperty<float>(audio, device, virtualMainVolumeAddress), std::nullopt);
    fakeAudio().set(virtualVolume, std::uint64_t{1});
    EXPECT_EQ(audioProperty<float>(audio, device, virtualMainVolumeAddress), std::nullopt);
    EXPECT_FALSE(setAudioProperty(audio, device, virtualMainVolumeAddress, 0.5F));
}

} // namespace
} // namespace quillon
