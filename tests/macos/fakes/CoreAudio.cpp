#include "FakeAudio.h"

#include <utility>

using namespace quillon::fakes;

namespace quillon::fakes {

FakeAudio& fakeAudio() {
    static FakeAudio fake;
    return fake;
}

void FakeAudio::put(const Place& place, Property property) {
    const std::lock_guard lock(mutex_);
    properties_[place] = std::move(property);
}

std::optional<FakeAudio::Property> FakeAudio::find(const Place& place) const {
    const std::lock_guard lock(mutex_);
    const auto found = properties_.find(place);
    return found == properties_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<FakeAudio::Call> FakeAudio::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

void FakeAudio::record(Call call) {
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
}

void FakeAudio::reset() {
    const std::lock_guard lock(mutex_);
    properties_.clear();
    calls_.clear();
}

namespace {
FakeAudio::Place placeOf(AudioObjectID object, const AudioObjectPropertyAddress* address) {
    return {object, address->mSelector, address->mScope, address->mElement};
}
} // namespace

} // namespace quillon::fakes

extern "C" {

OSStatus AudioObjectGetPropertyData(AudioObjectID object, const AudioObjectPropertyAddress* address,
                                    UInt32 qualifierDataSize, const void* qualifierData,
                                    UInt32* dataSize, void* data) {
    const auto place = placeOf(object, address);
    fakeAudio().record({__func__, place, qualifierDataSize, qualifierData != nullptr, *dataSize});
    const auto property = fakeAudio().find(place);
    if (!property) {
        return kAudioHardwareUnknownPropertyError;
    }
    if (property->readError != kAudioHardwareNoError) {
        return property->readError;
    }
    if (*dataSize < property->data.size()) {
        return kAudioHardwareBadPropertySizeError;
    }
    *dataSize = static_cast<UInt32>(property->data.size());
    std::memcpy(data, property->data.data(), property->data.size());
    return kAudioHardwareNoError;
}

OSStatus AudioObjectIsPropertySettable(AudioObjectID object,
                                       const AudioObjectPropertyAddress* address,
                                       Boolean* isSettable) {
    const auto place = placeOf(object, address);
    fakeAudio().record({__func__, place, 0, false, 0});
    const auto property = fakeAudio().find(place);
    if (!property) {
        return kAudioHardwareUnknownPropertyError;
    }
    if (property->settableError == kAudioHardwareNoError) {
        *isSettable = property->isSettable;
    }
    return property->settableError;
}

OSStatus AudioObjectSetPropertyData(AudioObjectID object, const AudioObjectPropertyAddress* address,
                                    UInt32 qualifierDataSize, const void* qualifierData,
                                    UInt32 dataSize, const void* data) {
    const auto place = placeOf(object, address);
    fakeAudio().record({__func__, place, qualifierDataSize, qualifierData != nullptr, dataSize});
    auto property = fakeAudio().find(place);
    if (!property) {
        return kAudioHardwareUnknownPropertyError;
    }
    if (property->writeError != kAudioHardwareNoError) {
        return property->writeError;
    }
    if (!property->isSettable) {
        return kAudioHardwareUnspecifiedError;
    }
    if (dataSize != property->data.size()) {
        return kAudioHardwareBadPropertySizeError;
    }
    std::memcpy(property->data.data(), data, dataSize);
    fakeAudio().put(place, *std::move(property));
    return kAudioHardwareNoError;
}

} // extern "C"
