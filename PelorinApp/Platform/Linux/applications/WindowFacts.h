#pragma once

#include "Platform/Geometry.h"
#include "Platform/Linux/x11/ScreenGeometry.h"
#include "Platform/WindowServer.h"

#include <cstdint>
#include <optional>
#include <string>

#include <xcb/xcb.h>

namespace quillon {

/// What a window says it is for.
enum class WindowKind {
    ordinary, // also dialogs, and what says nothing
    desktop,
    palette,
    dock,
    notice,
    menu,
    tip,
};

/// In pixels, at the edges of a rectangle.
struct Margins {
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;
    bool operator==(const Margins&) const = default;
};

/// Where a window is among desktops, and whether it is shown there.
struct WindowState {
    std::optional<std::uint32_t> desktop; // nothing where the window manager has only one
    bool isManaged = false;               // the window manager has put it on a screen, or minimised
    bool isIconic = false;                // also when it is on another desktop, as some have it
    bool isHidden = false;                // also where it belongs; shaded ones may be, too
    bool isShaded = false;                // only its title is to be seen
    bool skipsTaskbar = false;
};

/// What there is to know of a window, as the window, its manager and the X server say it.
struct WindowFacts {
    xcb_window_t id = XCB_NONE;
    std::uint32_t client = 0; // the connection that made it
    WindowState state;
    WindowKind kind = WindowKind::ordinary;
    std::optional<PixelRect> interior;       // what the application draws, in the root window
    Margins frame;                           // what the window manager has put around it
    Margins shadow;                          // how much of the interior is no more than the shadow
    std::optional<ProcessId> claimedProcess; // as the window says
    std::string machine;                     // where the window says that it runs; may be empty
    std::optional<ProcessId> connectedProcess; // as the X server knows it
    std::string instance;                      // the two names of its class
    std::string className;
    std::string applicationId; // a desktop entry's name, of the programs that say it
};

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

/// Whether it is on the screen while this desktop is. One that may lie under others is.
[[nodiscard]] bool isOnScreen(const WindowState& state, std::optional<std::uint32_t> current);

/// Whether the user has put it away, on whatever desktop.
[[nodiscard]] bool isMinimised(const WindowState& state, std::optional<std::uint32_t> current);

/// Above ordinary windows, whose layer is 0, or below.
[[nodiscard]] int layerOf(WindowKind kind);

/// Whether a taskbar shows it.
[[nodiscard]] bool hasTaskbarButton(const WindowFacts& window);

/// The process on this machine that it belongs to. A number that it brings from another machine
/// would be that of somebody else here.
[[nodiscard]] std::optional<ProcessId> ownerProcess(const WindowFacts& window,
                                                    const std::string& thisMachine);

/// With its frame and without its shadow, in points from the main screen's top left, y downward.
[[nodiscard]] std::optional<Rect> boundsOf(const WindowFacts& window,
                                           const ScreenGeometry& geometry);

} // namespace quillon
