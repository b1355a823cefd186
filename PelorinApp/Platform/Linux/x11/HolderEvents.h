#pragma once

#include "Platform/Linux/x11/WheelGrabs.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <deque>

namespace quillon {

/// The events of the holder's connection, in order. Some must be looked at before their turn: what
/// the server said of the pointer may be older than they are.
class HolderEvents {
  public:
    /// `wheel` is told of each as soon as it is read.
    HolderEvents(const X11Connection& connection, WheelGrabs& wheel)
        : connection_(connection), wheel_(wheel) {}

    /// Null when there is none.
    [[nodiscard]] XcbOwned<xcb_generic_event_t> next();

    /// Those that have arrived; they keep their turn.
    void readEarly();

    /// Whether the server has sent none that are yet to be dealt with.
    [[nodiscard]] bool isQuiet();

  private:
    const X11Connection& connection_;
    WheelGrabs& wheel_;
    std::deque<XcbOwned<xcb_generic_event_t>> early_;
};

} // namespace quillon
