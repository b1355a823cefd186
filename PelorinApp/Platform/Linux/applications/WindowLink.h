#pragma once

#include "Platform/Linux/applications/WindowAtoms.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <memory>

namespace quillon {

/// A connection to the X server for all that concerns the windows of other programs. One thread.
///
/// It is nobody's business but ours: errors about windows that are gone end up nowhere.
class WindowLink {
  public:
    /// Null when there is no server.
    static std::unique_ptr<WindowLink> open();

    [[nodiscard]] xcb_connection_t* get() const { return connection_->get(); }
    [[nodiscard]] xcb_window_t root() const { return connection_->root(); }
    [[nodiscard]] bool isBroken() const { return connection_->isBroken(); }
    [[nodiscard]] const WindowAtoms& atoms() const { return atoms_; }

    /// The connection that a window or another resource belongs to, whichever of them is asked.
    [[nodiscard]] std::uint32_t clientOf(std::uint32_t resource) const {
        return resource & ~resourceMask_;
    }

    /// Whether the server can tell whose process a connection is.
    [[nodiscard]] bool knowsProcesses() const { return knowsProcesses_; }

    /// Has the server say what time it is; to be heard once anything that is asked later is.
    void askTime() const;

    /// What it said last; XCB_CURRENT_TIME when it has said nothing. Forgets all errors.
    [[nodiscard]] xcb_timestamp_t takeTime() const;

  private:
    explicit WindowLink(std::unique_ptr<X11Connection> connection);

    std::unique_ptr<X11Connection> connection_;
    WindowAtoms atoms_;
    std::uint32_t resourceMask_;
    bool knowsProcesses_;
    xcb_window_t window_; // ours, for asking the time
};

} // namespace quillon
