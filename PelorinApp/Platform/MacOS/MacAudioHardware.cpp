#include "Platform/MacOS/MacAudioHardware.h"

#include <CoreAudio/CoreAudio.h>

namespace quillon {

namespace {
AudioObjectPropertyAddress native(const AudioPropertyAddress& address) {
    return {.mSelector = address.selector, .mScope = address.scope, .mElement = address.element};
}
} // namespace

bool MacAudioHardware::getPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<std::byte> data) {
    const auto where = native(address);
    auto size = static_cast<UInt32>(data.size());
    return AudioObjectGetPropertyData(object, &where, 0, nullptr, &size, data.data()) ==
               kAudioHardwareNoError &&
           size == data.size();
}

std::optional<bool> MacAudioHardware::isPropertySettable(AudioObjectId object,
                                                         const AudioPropertyAddress& address) {
    const auto where = native(address);
    Boolean settable = 0;
    if (AudioObjectIsPropertySettable(object, &where, &settable) != kAudioHardwareNoError) {
        return std::nullopt;
    }
    return settable != 0;
}

bool MacAudioHardware::setPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                       std::span<const std::byte> data) {
    const auto where = native(address);
    return AudioObjectSetPropertyData(object, &where, 0, nullptr, static_cast<UInt32>(data.size()),
                                      data.data()) == kAudioHardwareNoError;
}

} // namespace quillon
