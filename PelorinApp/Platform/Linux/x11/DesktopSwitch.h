#pragma once

#include "Platform/Linux/x11/DesktopGrid.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace quillon {

/// Moves to a neighbouring desktop through the window manager. Any thread; one move at a time, each
/// seen through to its end, so that two quick ones are two desktops and not one.
class DesktopSwitch {
  public:
    /// A description of what went wrong, if anything did. At the end of a row that does not wrap,
    /// staying is right.
    [[nodiscard]] std::optional<std::string> move(DesktopDirection direction);

  private:
    [[nodiscard]] bool connect();
    [[nodiscard]] xcb_timestamp_t serverTime() const;
    void request(std::uint32_t desktop) const;
    [[nodiscard]] bool waitUntilCurrent(std::uint32_t desktop) const;

    std::mutex mutex_;
    std::unique_ptr<X11Connection> connection_;
    xcb_window_t window_ = XCB_NONE; // ours, for asking the time
    xcb_atom_t currentDesktop_ = XCB_ATOM_NONE;
    xcb_atom_t numberOfDesktops_ = XCB_ATOM_NONE;
    xcb_atom_t desktopLayout_ = XCB_ATOM_NONE;
    xcb_atom_t timeAtom_ = XCB_ATOM_NONE;
};

} // namespace quillon
