#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <memory>

#include <xcb/record.h>

namespace quillon {

/// Wakes its reader whenever the pointer has moved, by whatever means.
///
/// Raw input events would do for devices, but the server sends none when a program warps the
/// pointer; the RECORD extension sees every motion. It wants a connection of its own.
class PointerWatch {
  public:
    /// Null when the server does not offer it.
    static std::unique_ptr<PointerWatch> start();

    PointerWatch(const PointerWatch&) = delete;
    PointerWatch& operator=(const PointerWatch&) = delete;
    ~PointerWatch() = default;

    [[nodiscard]] int descriptor() const { return connection_->descriptor(); }

    /// Reads what has arrived; true when there was motion in it.
    bool drain();

    /// The server has ended the watch.
    [[nodiscard]] bool isBroken() const { return ended_ || connection_->isBroken(); }

  private:
    PointerWatch(std::unique_ptr<X11Connection> connection, unsigned sequence)
        : connection_(std::move(connection)), sequence_(sequence) {}

    std::unique_ptr<X11Connection> connection_;
    unsigned sequence_;
    bool ended_ = false;
};

} // namespace quillon
