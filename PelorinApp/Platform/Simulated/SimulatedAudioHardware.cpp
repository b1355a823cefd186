#include "Platform/Simulated/SimulatedAudioHardware.h"

#include "Platform/Simulated/ActionNumber.h"

#include <cmath>

namespace quillon {

namespace {

constexpr AudioObjectId deviceId = 42;

std::string nameOf(std::uint32_t selector) {
    std::string name;
    for (const std::uint32_t shift : {24U, 16U, 8U, 0U}) {
        name += static_cast<char>(selector >> shift & 0xFFU);
    }
    return name;
}

} // namespace

bool SimulatedAudioHardware::isControl(AudioObjectId object,
                                       const AudioPropertyAddress& address) const {
    return device && object == deviceId &&
           (address == virtualMainVolumeAddress || address == volumeScalarAddress ||
            address == muteAddress);
}

bool SimulatedAudioHardware::isSettable(const AudioPropertyAddress& address) const {
    return device->settable.contains(nameOf(address.selector));
}

bool SimulatedAudioHardware::getPropertyData(AudioObjectId object,
                                             const AudioPropertyAddress& address,
                                             std::span<std::byte> data) {
    if (object == audioSystemObject) {
        return device && address == defaultOutputDeviceAddress && giveAudioValue(deviceId, data);
    }
    if (!isControl(object, address)) {
        return false;
    }
    return address == muteAddress ? giveAudioValue(std::uint32_t{device->muted}, data)
                                  : giveAudioValue(static_cast<float>(device->volume), data);
}

std::optional<bool>
SimulatedAudioHardware::isPropertySettable(AudioObjectId object,
                                           const AudioPropertyAddress& address) {
    return isControl(object, address) ? std::optional(isSettable(address)) : std::nullopt;
}

bool SimulatedAudioHardware::setPropertyData(AudioObjectId object,
                                             const AudioPropertyAddress& address,
                                             std::span<const std::byte> data) {
    if (!isControl(object, address) || !isSettable(address) || device->readOnly) {
        return false;
    }
    if (address == muteAddress) {
        const auto mute = audioValue<std::uint32_t>(data);
        if (mute) {
            device->muted = *mute != 0;
            sink_(device->muted ? "mute" : "unmute", {});
        }
        return mute.has_value();
    }
    const auto volume = audioValue<float>(data);
    if (volume) {
        setVolume(*volume);
    }
    return volume.has_value();
}

void SimulatedAudioHardware::setVolume(float volume) {
    device->volume = device->step
                         ? std::round(static_cast<double>(volume) / *device->step) * *device->step
                         : static_cast<double>(volume);
    sink_("volume", actionNumber(device->volume));
}

} // namespace quillon
