#pragma once

#include "Platform/AudioHardware.h"

namespace quillon {

class MacAudioHardware final : public AudioHardware {
  public:
    [[nodiscard]] bool getPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<std::byte> data) override;
    [[nodiscard]] std::optional<bool>
    isPropertySettable(AudioObjectId object, const AudioPropertyAddress& address) override;
    [[nodiscard]] bool setPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<const std::byte> data) override;
};

} // namespace quillon
