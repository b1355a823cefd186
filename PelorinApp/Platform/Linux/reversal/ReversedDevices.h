#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace quillon {

/// Which devices scroll the other way because this program has told them to, said to whoever takes
/// part in what they do. Set on the main thread, read on any, without waiting.
class ReversedDevices {
  public:
    /// Of the wheels that are plain buttons, which may not say whose they are.
    enum class Plain : std::uint8_t { none, some, all };

    static constexpr std::size_t mostDevices = 256; // the X server has no more

    /// By the number of the device.
    void set(const std::array<bool, mostDevices>& areReversed, Plain plain) {
        for (std::size_t i = 0; i < mostDevices; ++i) {
            reversed_[i] = areReversed[i];
        }
        plain_ = plain;
    }

    /// A device's buttons or axes have another meaning than before.
    void noteChange() { ++changes_; }

    [[nodiscard]] bool contains(std::uint16_t device) const {
        return device < reversed_.size() && reversed_[device];
    }
    [[nodiscard]] Plain plain() const { return plain_; }

    /// Grows with each change.
    [[nodiscard]] std::uint32_t changes() const { return changes_; }

  private:
    std::array<std::atomic<bool>, mostDevices> reversed_{};
    std::atomic<Plain> plain_ = Plain::none;
    std::atomic<std::uint32_t> changes_ = 0;
};

} // namespace quillon
