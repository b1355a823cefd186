#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>

namespace quillon {

/// A press by which it is known again when it is heard of in two ways.
struct CaughtPress {
    enum class Kind : std::uint16_t { left = 1, wheel = 2 };

    Kind kind = Kind::left;
    std::uint16_t which = 0; // the device of a left press; a wheel's button, for applications
    std::uint32_t time = 0;  // the X server's
};

/// Presses of the left button, and of a wheel's, that do not reach any program, told to those of
/// this program's parts that listen to all input. They hear of a press before it is decided upon.
class CaughtPresses {
  public:
    using Kind = CaughtPress::Kind;

    // The holder's thread

    /// Before the button is held for the first time.
    void setMayCatch(Kind kind) { mayCatch(kind) = true; }

    void consume(const CaughtPress& press) { consumed_[next_++ % consumed_.size()] = key(press); }

    // The main thread

    /// Whether one that is heard of now may yet be consumed, or have been. That stays so: who is
    /// late to hear of it finds the button free again.
    [[nodiscard]] bool mayHaveCaught(Kind kind) const { return mayCatch_[index(kind)]; }

    /// Whether one that was heard of before whenSettled() has answered was consumed. Once for each:
    /// two may have the same time.
    ///
    /// The server looks at its clock anew between telling that a button went down and delivering
    /// the press, so the two times may differ: the one that is nearest is taken. No finger presses
    /// twice in what is allowed for that; a wheel does, and then its notches are alike.
    [[nodiscard]] bool claim(const CaughtPress& press) {
        std::atomic<std::uint64_t>* nearest = nullptr;
        std::uint64_t found = 0;
        std::int64_t least = tolerance + 1;
        for (auto& each : consumed_) {
            const std::uint64_t value = each;
            if (value >> 32 != key(press) >> 32) {
                continue;
            }
            const std::int64_t apart = std::abs(std::int64_t{
                static_cast<std::int32_t>(static_cast<std::uint32_t>(value) - press.time)});
            if (apart < least) {
                least = apart;
                nearest = &each;
                found = value;
            }
        }
        return nearest != nullptr && nearest->compare_exchange_strong(found, 0);
    }

    /// Calls its argument, on the main thread, when all has been decided that the server has sent
    /// by now; in order. Set by whoever has the holder.
    std::function<void(std::function<void()>)> whenSettled;

  private:
    /// As many as a wheel can bring while nobody comes to ask.
    static constexpr std::size_t latest = 256;
    static constexpr std::int64_t tolerance = 15; // milliseconds

    static constexpr std::size_t index(Kind kind) { return static_cast<std::size_t>(kind) - 1; }
    static constexpr std::uint64_t key(const CaughtPress& press) {
        return std::uint64_t{static_cast<std::uint16_t>(press.kind)} << 48 |
               std::uint64_t{press.which} << 32 | press.time;
    }

    std::atomic<bool>& mayCatch(Kind kind) { return mayCatch_[index(kind)]; }

    std::array<std::atomic<bool>, 2> mayCatch_{};
    std::array<std::atomic<std::uint64_t>, latest> consumed_{};
    std::size_t next_ = 0;
};

} // namespace quillon
