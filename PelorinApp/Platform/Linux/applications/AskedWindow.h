#pragma once

#include "Platform/Linux/applications/WindowFacts.h"
#include "Platform/Linux/applications/WindowLink.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <optional>

namespace quillon {

/// What tells where a window is: asked of many before it is heard of any.
class AskedState {
  public:
    AskedState(const WindowLink& link, xcb_window_t window);

    /// To be called once. Nothing when the window is gone.
    [[nodiscard]] std::optional<WindowState> answer() const;

  private:
    const WindowAtoms& atoms_;
    AskedProperty desktop_, state_, wmState_;
};

/// All that there is to know of a window, likewise; but not whose its connection is.
class AskedWindow {
  public:
    AskedWindow(const WindowLink& link, xcb_window_t window);

    /// To be called once. Nothing when the window is gone.
    [[nodiscard]] std::optional<WindowFacts> answer() const;

  private:
    [[nodiscard]] AskedProperty ask(xcb_atom_t property, std::uint32_t longest) const;
    [[nodiscard]] std::optional<PixelRect> interior() const;

    const WindowLink& link_;
    xcb_window_t window_;
    AskedState state_;
    xcb_get_geometry_cookie_t geometry_;
    xcb_translate_coordinates_cookie_t corner_;
    AskedProperty frame_, shadow_, type_, process_, machine_, class_, applicationId_;
};

} // namespace quillon
