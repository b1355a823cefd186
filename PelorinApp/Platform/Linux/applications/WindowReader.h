#pragma once

#include "Platform/Linux/applications/WindowFacts.h"
#include "Platform/Linux/applications/WindowLink.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <optional>
#include <vector>

namespace quillon {

/// The windows of a desktop at one moment.
struct DesktopFacts {
    std::vector<WindowFacts> windows; // front to back
    std::optional<std::uint32_t> currentDesktop;
    /// Whose is what is typed: the connection, and the window where it is one of the above.
    std::optional<std::uint32_t> frontClient;
    xcb_window_t frontWindow = XCB_NONE;
    std::optional<ProcessId> frontProcess; // as the X server knows it
};

/// Reads them all, waiting twice for the X server however many there are. Nothing without a window
/// manager that lists its windows, or a server.
[[nodiscard]] std::optional<DesktopFacts> readDesktop(const WindowLink& link);

/// The windows that the window manager looks after.
class AskedStacking {
  public:
    explicit AskedStacking(const WindowLink& link);

    /// To be called once. Front to back; nothing when nobody lists them.
    [[nodiscard]] std::optional<std::vector<xcb_window_t>> answer() const;

  private:
    AskedProperty stacking_, list_;
};

} // namespace quillon
