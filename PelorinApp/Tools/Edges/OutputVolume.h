#pragma once

#include "Platform/AudioHardware.h"

#include <optional>

namespace quillon {

/// The master control of the default output device, which is asked for anew at each call. Any
/// thread; each call may wait for the sound system.
class OutputVolume {
  public:
    explicit OutputVolume(AudioHardware& audio) : audio_(audio) {}

    [[nodiscard]] std::optional<AudioObjectId> defaultOutputDevice() const;

    /// 0…1; 0 when it cannot be read.
    [[nodiscard]] float getOutputVolume() const;

    /// Clamps to 0…1. False when the device did not take it.
    [[nodiscard]] bool setOutputVolume(float volume) const;

    [[nodiscard]] bool isOutputMuted() const;

    /// As far as the device lets itself be unmuted.
    void unmuteOutput() const;

  private:
    [[nodiscard]] AudioPropertyAddress volumeAddress(AudioObjectId device) const;

    AudioHardware& audio_;
};

} // namespace quillon
