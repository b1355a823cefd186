#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>

namespace quillon {

/// The number that four characters stand for, the first one in the highest byte.
constexpr std::uint32_t fourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
        code = code << 8U | static_cast<unsigned char>(text[i]);
    }
    return code;
}

using AudioObjectId = std::uint32_t;

/// The object that knows the devices.
inline constexpr AudioObjectId audioSystemObject = 1;

struct AudioPropertyAddress {
    std::uint32_t selector = 0;
    std::uint32_t scope = 0;
    std::uint32_t element = 0; // 0 is the main one: the device as a whole
    bool operator==(const AudioPropertyAddress&) const = default;
};

inline constexpr std::uint32_t audioScopeGlobal = fourCharCode("glob");
inline constexpr std::uint32_t audioScopeOutput = fourCharCode("outp");

/// Of the system object, global: AudioObjectId.
inline constexpr AudioPropertyAddress defaultOutputDeviceAddress{fourCharCode("dOut"),
                                                                 audioScopeGlobal, 0};
/// Of a device, for its output. Volumes are float, 0…1 as people see them (not as amplitudes are);
/// the virtual one is what the system makes of a device's channels, the scalar one a control that
/// the device itself has. Mute is std::uint32_t, 0 for audible.
inline constexpr AudioPropertyAddress virtualMainVolumeAddress{fourCharCode("vmvc"),
                                                               audioScopeOutput, 0};
inline constexpr AudioPropertyAddress volumeScalarAddress{fourCharCode("volm"), audioScopeOutput,
                                                          0};
inline constexpr AudioPropertyAddress muteAddress{fourCharCode("mute"), audioScopeOutput, 0};

/// Properties of the audio devices. Any thread; several may call at once. A call may wait for the
/// sound server, but never for long: one that does not answer has failed.
class AudioHardware {
  public:
    virtual ~AudioHardware() = default;

    /// False on any error; a property is as large as its type, and `data` must be as large.
    [[nodiscard]] virtual bool getPropertyData(AudioObjectId object,
                                               const AudioPropertyAddress& address,
                                               std::span<std::byte> data) = 0;

    /// Nothing on an error.
    [[nodiscard]] virtual std::optional<bool>
    isPropertySettable(AudioObjectId object, const AudioPropertyAddress& address) = 0;

    /// False on any error. A device may take another value than it is given.
    [[nodiscard]] virtual bool setPropertyData(AudioObjectId object,
                                               const AudioPropertyAddress& address,
                                               std::span<const std::byte> data) = 0;
};

/// For those who implement it: a property's value, given and taken as `data`. False, or nothing,
/// when that is of another size.
template <class T>
[[nodiscard]] bool giveAudioValue(T value, std::span<std::byte> data) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (data.size() != sizeof value) {
        return false;
    }
    std::memcpy(data.data(), &value, sizeof value);
    return true;
}
template <class T>
[[nodiscard]] std::optional<T> audioValue(std::span<const std::byte> data) {
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (data.size() != sizeof value) {
        return std::nullopt;
    }
    std::memcpy(&value, data.data(), sizeof value);
    return value;
}

template <class T>
[[nodiscard]] std::optional<T> audioProperty(AudioHardware& audio, AudioObjectId object,
                                             const AudioPropertyAddress& address) {
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (!audio.getPropertyData(object, address, std::as_writable_bytes(std::span(&value, 1)))) {
        return std::nullopt;
    }
    return value;
}

template <class T>
[[nodiscard]] bool setAudioProperty(AudioHardware& audio, AudioObjectId object,
                                    const AudioPropertyAddress& address, T value) {
    static_assert(std::is_trivially_copyable_v<T>);
    return audio.setPropertyData(object, address, std::as_bytes(std::span(&value, 1)));
}

} // namespace quillon
