#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <memory>
#include <optional>

namespace quillon {

/// Wakes its reader whenever the pointer has moved, by whatever means, on a connection of its own.
///
/// Motion of devices comes as raw events of the input extension. The server sends none when a
/// program warps the pointer; the RECORD extension, where there is one, reports that too, though no
/// sooner than the server has something to send to somebody.
class PointerWatch {
  public:
    /// Null when the server is not to be reached.
    static std::unique_ptr<PointerWatch> start();

    PointerWatch(const PointerWatch&) = delete;
    PointerWatch& operator=(const PointerWatch&) = delete;
    ~PointerWatch() = default;

    [[nodiscard]] int descriptor() const { return connection_->descriptor(); }

    /// Reads what has arrived; true when there was motion in it.
    bool drain();

    [[nodiscard]] bool isBroken() const { return connection_->isBroken(); }

  private:
    explicit PointerWatch(std::unique_ptr<X11Connection> connection)
        : connection_(std::move(connection)) {}

    void selectRawMotion();
    void startRecording();
    bool drainEvents(xcb_generic_event_t* (*next)(xcb_connection_t*));
    bool drainRecord();

    std::unique_ptr<X11Connection> connection_;
    std::optional<unsigned> recording_; // the request that all records answer
};

} // namespace quillon
