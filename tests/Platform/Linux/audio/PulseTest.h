#pragma once

#include "Platform/Linux/audio/PulseAudioHardware.h"
#include "support/SoundServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>

namespace quillon {

/// With a place for sound servers, and the service that looks for them there.
class PulseTest : public testing::Test {
  protected:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// What a call that waits for nothing takes at most, on a busy machine too.
    static constexpr Milliseconds promptly{100};

    /// What a call takes at most.
    static constexpr Milliseconds atMost = PulseAudioHardware::patience + promptly;

    std::optional<AudioObjectId> defaultDevice() {
        return audioProperty<AudioObjectId>(audio_, audioSystemObject, defaultOutputDeviceAddress);
    }
    std::optional<float> volume(AudioObjectId device) {
        return audioProperty<float>(audio_, device, virtualMainVolumeAddress);
    }
    /// Of the default device.
    std::optional<float> volume() {
        const auto device = defaultDevice();
        return device ? volume(*device) : std::nullopt;
    }
    bool setVolume(AudioObjectId device, float volume) {
        return setAudioProperty(audio_, device, virtualMainVolumeAddress, volume);
    }
    bool setVolume(float volume) {
        const auto device = defaultDevice();
        return device && setVolume(*device, volume);
    }

    static Milliseconds duration(const std::function<void()>& work) {
        const auto start = Clock::now();
        work();
        return Clock::now() - start;
    }

    /// Calls again and again; how long it was until it succeeded, nothing when it never does.
    static std::optional<Milliseconds> untilIt(const std::function<bool()>& succeeds) {
        const auto start = Clock::now();
        while (!succeeds()) {
            if (Clock::now() - start > std::chrono::seconds(8)) {
                return std::nullopt;
            }
        }
        return Clock::now() - start;
    }

    SoundServer server_;
    PulseAudioHardware audio_;
};

} // namespace quillon
