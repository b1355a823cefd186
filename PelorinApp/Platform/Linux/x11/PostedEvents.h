#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace quillon {

/// What this program posts, told to those of its parts that listen to all input: events of the
/// XTEST extension do not say which program has made them.
///
/// Counted by button and direction. Should another program post the same in the same moment, one
/// of the two is taken for the other, which makes no difference. Any thread.
class PostedEvents {
  public:
    /// Before it is posted. `button` is the injecting device's number.
    void expect(std::uint32_t button, bool isDown) {
        if (auto* count = find(button, isDown)) {
            count->fetch_add(1);
        }
    }

    /// Whether the event that has arrived is one of those; each is only once.
    [[nodiscard]] bool claim(std::uint32_t button, bool isDown) {
        auto* count = find(button, isDown);
        if (count == nullptr) {
            return false;
        }
        std::uint32_t expected = count->load();
        while (expected != 0 && !count->compare_exchange_weak(expected, expected - 1)) {
        }
        return expected != 0;
    }

    /// None of those that were posted so far will arrive, or arrive any more: of the presses or the
    /// releases.
    void forget(bool isDown) {
        for (std::size_t button = 0; button < mostButtons; ++button) {
            *find(static_cast<std::uint32_t>(button), isDown) = 0;
        }
    }

    /// Of both.
    void forget() {
        forget(false);
        forget(true);
    }

  private:
    static constexpr std::size_t mostButtons = 32;

    std::atomic<std::uint32_t>* find(std::uint32_t button, bool isDown) {
        return button < mostButtons ? &counts_[button * 2 + (isDown ? 1 : 0)] : nullptr;
    }

    std::array<std::atomic<std::uint32_t>, mostButtons * 2> counts_{};
};

} // namespace quillon
