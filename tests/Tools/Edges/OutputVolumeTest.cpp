#include "Tools/Edges/OutputVolume.h"

#include "Platform/Simulated/SimulatedAudioHardware.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillon {
namespace {

struct OutputVolumeTest : testing::Test {
    std::vector<std::string> actions;
    SimulatedAudioHardware audio{[this](std::string_view kind, const std::string& detail) {
        actions.push_back(std::string(kind) + (detail.empty() ? "" : " ") + detail);
    }};
    OutputVolume output{audio};
};

TEST(AudioPropertyAddressTest, IsTheMastersOfADevicesOutput) {
    EXPECT_EQ(fourCharCode("dOut"), 0x644F7574U);
    EXPECT_EQ(defaultOutputDeviceAddress,
              (AudioPropertyAddress{fourCharCode("dOut"), fourCharCode("glob"), 0}));
    EXPECT_EQ(virtualMainVolumeAddress,
              (AudioPropertyAddress{fourCharCode("vmvc"), fourCharCode("outp"), 0}));
    EXPECT_EQ(volumeScalarAddress,
              (AudioPropertyAddress{fourCharCode("volm"), fourCharCode("outp"), 0}));
    EXPECT_EQ(muteAddress, (AudioPropertyAddress{fourCharCode("mute"), fourCharCode("outp"), 0}));
}

TEST_F(OutputVolumeTest, ReadsAndWritesTheVirtualVolumeWhereItCanBeSet) {
    audio.device->volume = 0.25;
    EXPECT_EQ(output.getOutputVolume(), 0.25F);
    EXPECT_TRUE(output.setOutputVolume(0.5F));
    EXPECT_EQ(actions, std::vector<std::string>{"volume 0.5"});
}

TEST_F(OutputVolumeTest, ElseTheDevicesOwnControl) {
    audio.device->settable = {"volm"};
    EXPECT_TRUE(output.setOutputVolume(0.75F));
    EXPECT_EQ(output.getOutputVolume(), 0.75F);
    audio.device->settable = {};
    EXPECT_EQ(output.getOutputVolume(), 0.75F) << "it can be read all the same";
    EXPECT_FALSE(output.setOutputVolume(0.5F));
    EXPECT_EQ(actions, std::vector<std::string>{"volume 0.75"});
}

TEST_F(OutputVolumeTest, ClampsWhatItWrites) {
    EXPECT_TRUE(output.setOutputVolume(1.5F));
    EXPECT_TRUE(output.setOutputVolume(-1));
    EXPECT_EQ(actions, (std::vector<std::string>{"volume 1", "volume 0"}));
}

TEST_F(OutputVolumeTest, WithoutADeviceThereIsSilence) {
    audio.device.reset();
    EXPECT_EQ(output.defaultOutputDevice(), std::nullopt);
    EXPECT_EQ(output.getOutputVolume(), 0);
    EXPECT_FALSE(output.setOutputVolume(0.5F));
    EXPECT_FALSE(output.isOutputMuted());
    output.unmuteOutput();
    EXPECT_TRUE(actions.empty());
}

TEST_F(OutputVolumeTest, UnmutesWhereTheDeviceLetsItself) {
    audio.device->muted = true;
    EXPECT_TRUE(output.isOutputMuted());
    output.unmuteOutput();
    EXPECT_FALSE(output.isOutputMuted());
    EXPECT_EQ(actions, std::vector<std::string>{"unmute"});

    audio.device->muted = true;
    audio.device->settable.erase("mute");
    output.unmuteOutput();
    EXPECT_TRUE(output.isOutputMuted());
    EXPECT_EQ(actions.size(), 1U);
}

/// A driver that does not say what can be written, and lets everything be.
class SilentDriver final : public AudioHardware {
  public:
    bool getPropertyData(AudioObjectId, const AudioPropertyAddress&,
                         std::span<std::byte> data) override {
        data.back() = std::byte{1}; // some number other than 0
        return true;
    }
    std::optional<bool> isPropertySettable(AudioObjectId, const AudioPropertyAddress&) override {
        return settable;
    }
    bool setPropertyData(AudioObjectId, const AudioPropertyAddress& address,
                         std::span<const std::byte>) override {
        written.push_back(address);
        return true;
    }

    std::optional<bool> settable;
    std::vector<AudioPropertyAddress> written;
};

TEST(OutputVolumeOfASilentDriver, IsTheDevicesOwnAndStaysMuted) {
    SilentDriver driver;
    const OutputVolume output(driver);
    EXPECT_TRUE(output.setOutputVolume(0.5F));
    EXPECT_EQ(driver.written, std::vector{volumeScalarAddress});
    output.unmuteOutput();
    driver.settable = false;
    output.unmuteOutput();
    EXPECT_EQ(driver.written.size(), 1U);
    driver.settable = true;
    output.unmuteOutput();
    EXPECT_EQ(driver.written.back(), muteAddress);
}

TEST_F(OutputVolumeTest, ADeviceThatRefusesSaysSo) {
    audio.device->readOnly = true;
    audio.device->muted = true;
    EXPECT_FALSE(output.setOutputVolume(0.1F));
    output.unmuteOutput();
    EXPECT_TRUE(output.isOutputMuted());
    EXPECT_EQ(output.getOutputVolume(), 0.5F);
}

} // namespace
} // namespace quillon
