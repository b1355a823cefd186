#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <cstdint>
#include <memory>
#include <utility>

namespace quillon {

/// Wakes its reader whenever the pointer has moved, by whatever means, or a button was let go.
///
/// Motion of devices comes as raw events of the input extension. The server sends none when a
/// program warps the pointer; the RECORD extension, where there is one, reports that too, though no
/// sooner than the server has something to send to somebody. Each has a connection of its own: X
/// servers crash when they write an event to a connection that is being recorded to.
class PointerWatch {
  public:
    /// Null when the server is not to be reached.
    static std::unique_ptr<PointerWatch> start();

    PointerWatch(const PointerWatch&) = delete;
    PointerWatch& operator=(const PointerWatch&) = delete;
    ~PointerWatch() = default;

    /// What to poll; the second is -1 where there is nothing more.
    [[nodiscard]] std::array<int, 2> descriptors() const;

    /// Reads what has arrived; true when there was something of the kind in it.
    bool drain();

    /// The device that moved the pointer last; 0 when none has yet.
    [[nodiscard]] std::uint16_t lastMover() const { return lastMover_; }

    [[nodiscard]] bool isBroken() const {
        return raw_->isBroken() || (record_ && record_->isBroken());
    }

  private:
    explicit PointerWatch(std::unique_ptr<X11Connection> raw) : raw_(std::move(raw)) {}

    void selectRawEvents();
    void startRecording();
    bool drainRaw();
    bool drainRecord();

    std::unique_ptr<X11Connection> raw_;
    std::unique_ptr<X11Connection> record_;
    unsigned recording_ = 0; // the request that all records answer
    std::uint16_t lastMover_ = 0;
};

} // namespace quillon
