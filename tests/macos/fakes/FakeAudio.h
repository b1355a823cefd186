#pragma once

#include <CoreAudio/CoreAudio.h>

#include <compare>
#include <cstddef>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillon::fakes {

/// The audio objects and their properties. Any thread.
class FakeAudio {
  public:
    struct Place {
        AudioObjectID object;
        AudioObjectPropertySelector selector;
        AudioObjectPropertyScope scope;
        AudioObjectPropertyElement element;
        auto operator<=>(const Place&) const = default;
    };
    struct Property {
        std::vector<std::byte> data;
        bool isSettable = true;
        OSStatus readError = kAudioHardwareNoError;
        OSStatus settableError = kAudioHardwareNoError;
        OSStatus writeError = kAudioHardwareNoError;
    };
    struct Call {
        std::string function;
        Place place;
        UInt32 qualifierSize;
        bool hasQualifier;
        UInt32 dataSize; // that there is room for, or that is written
    };

    template <class T>
    void set(const Place& place, T value, bool isSettable = true) {
        const auto bytes = std::as_bytes(std::span(&value, 1));
        put(place, {.data = {bytes.begin(), bytes.end()}, .isSettable = isSettable});
    }
    void put(const Place& place, Property property);

    /// Nothing when there is no such property, or it is of another size.
    template <class T>
    [[nodiscard]] std::optional<T> value(const Place& place) const {
        const auto property = find(place);
        T value{};
        if (!property || property->data.size() != sizeof value) {
            return std::nullopt;
        }
        std::memcpy(&value, property->data.data(), sizeof value);
        return value;
    }

    [[nodiscard]] std::vector<Call> calls() const;
    void reset();

    // For the system's functions.
    [[nodiscard]] std::optional<Property> find(const Place& place) const;
    void record(Call call);

  private:
    mutable std::mutex mutex_;
    std::map<Place, Property> properties_;
    std::vector<Call> calls_;
};

FakeAudio& fakeAudio();

} // namespace quillon::fakes
