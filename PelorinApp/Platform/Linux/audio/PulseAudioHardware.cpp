#include "Platform/Linux/audio/PulseAudioHardware.h"

#include <cmath>
#include <utility>

namespace quillon {

namespace {

enum class Control { volume, mute };

std::optional<Control> controlAt(const AudioPropertyAddress& address) {
    if (address == virtualMainVolumeAddress || address == volumeScalarAddress) {
        return Control::volume;
    }
    return address == muteAddress ? std::optional(Control::mute) : std::nullopt;
}

} // namespace

PulseAudioHardware::~PulseAudioHardware() {
    loop_.post([this] { devices_.close(); });
    loop_.stop();
    calls_.awaitNone();
}

template <class T>
std::optional<T>
PulseAudioHardware::ask(Clock::time_point deadline,
                        std::function<void(const std::shared_ptr<Reply<T>>&)> begin) {
    if (overdue_.areThere()) {
        return std::nullopt;
    }
    const auto reply = std::make_shared<Reply<T>>(overdue_);
    const bool isPosted = loop_.post([this, reply, begin = std::move(begin)] {
        devices_.connect([reply, begin](bool isConnected) {
            if (isConnected && !reply->isOverdue()) {
                begin(reply);
            } else {
                reply->give(std::nullopt);
            }
        });
    });
    return isPosted ? reply->await(deadline) : std::nullopt;
}

std::optional<SinkDevices::Device> PulseAudioHardware::device(AudioObjectId object) {
    using Device = SinkDevices::Device;
    return ask<Device>(Clock::now() + patience, [this, object](const auto& reply) {
        devices_.read(object, [reply](std::optional<Device> device) { reply->give(device); });
    });
}

bool PulseAudioHardware::setVolume(AudioObjectId object, float volume) {
    const auto deadline = Clock::now() + patience;
    const std::unique_lock lock(writing_, deadline);
    return lock.owns_lock() &&
           ask<bool>(deadline, [this, object, volume](const auto& reply) {
               devices_.setVolume(
                   object, volume, [reply] { return !reply->isOverdue(); },
                   [reply](std::optional<bool> isDone) { reply->give(isDone); });
           }).has_value();
}

bool PulseAudioHardware::setMute(AudioObjectId object, bool isMuted) {
    return ask<bool>(Clock::now() + patience,
                     [this, object, isMuted](const auto& reply) {
                         devices_.setMute(object, isMuted, [reply](std::optional<bool> isDone) {
                             reply->give(isDone);
                         });
                     })
        .has_value();
}

bool PulseAudioHardware::getPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                         std::span<std::byte> data) {
    const CallCount::Call call(calls_);
    const auto control = controlAt(address);
    if (object == audioSystemObject) {
        if (address != defaultOutputDeviceAddress || data.size() != sizeof(AudioObjectId)) {
            return false;
        }
    } else if (!control) {
        return false;
    }
    const auto found = device(object);
    if (!found) {
        return false;
    }
    if (!control) {
        return giveAudioValue(found->id, data);
    }
    if (control == Control::mute) {
        return giveAudioValue(std::uint32_t{found->isMuted}, data);
    }
    return found->volume && giveAudioValue(*found->volume, data);
}

std::optional<bool> PulseAudioHardware::isPropertySettable(AudioObjectId object,
                                                           const AudioPropertyAddress& address) {
    const CallCount::Call call(calls_);
    const auto control = controlAt(address);
    if (object == audioSystemObject || !control) {
        return std::nullopt;
    }
    const auto found = device(object);
    if (!found || (control == Control::volume && !found->volume)) {
        return std::nullopt;
    }
    return true;
}

bool PulseAudioHardware::setPropertyData(AudioObjectId object, const AudioPropertyAddress& address,
                                         std::span<const std::byte> data) {
    const CallCount::Call call(calls_);
    const auto control = controlAt(address);
    if (object == audioSystemObject || !control) {
        return false;
    }
    if (control == Control::mute) {
        const auto mute = audioValue<std::uint32_t>(data);
        return mute && setMute(object, *mute != 0);
    }
    const auto volume = audioValue<float>(data);
    return volume && !std::isnan(*volume) && setVolume(object, *volume);
}

} // namespace quillon
