#include "Tools/Edges/OutputVolume.h"

#include <algorithm>
#include <cstdint>

namespace quillon {

std::optional<AudioObjectId> OutputVolume::defaultOutputDevice() const {
    return audioProperty<AudioObjectId>(audio_, audioSystemObject, defaultOutputDeviceAddress);
}

/// The volume that people know, which many devices leave to the system; else their own control.
AudioPropertyAddress OutputVolume::volumeAddress(AudioObjectId device) const {
    return audio_.isPropertySettable(device, virtualMainVolumeAddress).value_or(false)
               ? virtualMainVolumeAddress
               : volumeScalarAddress;
}

float OutputVolume::getOutputVolume() const {
    const auto device = defaultOutputDevice();
    if (!device) {
        return 0;
    }
    return audioProperty<float>(audio_, *device, volumeAddress(*device)).value_or(0.0F);
}

bool OutputVolume::setOutputVolume(float volume) const {
    const auto device = defaultOutputDevice();
    return device && setAudioProperty(audio_, *device, volumeAddress(*device),
                                      std::clamp(volume, 0.0F, 1.0F));
}

bool OutputVolume::isOutputMuted() const {
    const auto device = defaultOutputDevice();
    return device && audioProperty<std::uint32_t>(audio_, *device, muteAddress).value_or(0) != 0;
}

void OutputVolume::unmuteOutput() const {
    const auto device = defaultOutputDevice();
    if (device && audio_.isPropertySettable(*device, muteAddress).value_or(false)) {
        [[maybe_unused]] const bool unmuted =
            setAudioProperty(audio_, *device, muteAddress, std::uint32_t{0});
    }
}

} // namespace quillon
