#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>

namespace quillon {

/// Presses of the left button that do not reach any program, told to those of this program's parts
/// that listen to all input. They hear of a press before it is decided upon.
class CaughtPresses {
  public:
    // The holder's thread

    /// Before the button is held for the first time.
    void setMayCatch() { mayCatch_ = true; }

    /// Of this device, at this X time.
    void consume(std::uint16_t device, std::uint32_t time) {
        consumed_[next_++ % consumed_.size()] = key(device, time);
    }

    // The main thread

    /// Whether a press that is heard of now may yet be consumed, or have been. That stays so: who
    /// is late to hear of it finds the button free again.
    [[nodiscard]] bool mayCatch() const { return mayCatch_; }

    /// Whether one that was heard of before whenSettled() has answered was consumed. Once for each:
    /// two may have the same time.
    ///
    /// The server looks at its clock anew between telling that a button went down and delivering
    /// the press, so the two times may differ. No finger presses twice in what is allowed for that.
    [[nodiscard]] bool claim(std::uint16_t device, std::uint32_t time) {
        return std::any_of(consumed_.begin(), consumed_.end(), [&](auto& each) {
            std::uint64_t value = each;
            const bool isIt =
                value != 0 && value >> 32 == device &&
                std::abs(static_cast<std::int32_t>(static_cast<std::uint32_t>(value) - time)) <=
                    tolerance;
            return isIt && each.compare_exchange_strong(value, 0);
        });
    }

    /// Calls its argument, on the main thread, when all has been decided that the server has sent
    /// by now; in order. Set by whoever has the holder.
    std::function<void(std::function<void()>)> whenSettled;

  private:
    static constexpr std::size_t latest = 16;
    static constexpr std::int32_t tolerance = 15; // milliseconds

    static constexpr std::uint64_t key(std::uint16_t device, std::uint32_t time) {
        return std::uint64_t{device} << 32 | time;
    }

    std::atomic<bool> mayCatch_ = false;
    std::array<std::atomic<std::uint64_t>, latest> consumed_{};
    std::size_t next_ = 0;
};

} // namespace quillon
