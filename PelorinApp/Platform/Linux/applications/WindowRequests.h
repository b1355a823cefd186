#pragma once

#include "Platform/Linux/applications/WindowLink.h"

#include <span>

namespace quillon {

/// What is asked of the window manager about windows of other programs. It is asked, and no answer
/// is waited for; of the programs nothing is asked.
///
/// Each request first reads anew where its windows are, waiting once for the X server, and follows
/// them to another desktop. It answers false when they are gone or were minimised: then nothing
/// happens.
class WindowRequests {
  public:
    explicit WindowRequests(const WindowLink& link) : link_(link) {}

    /// Gives the front-most of `windows` the keyboard, and raises it; those on the present desktop
    /// come first. With it come forward the `companions` on its desktop, which keep their order.
    /// Both in any order; the first may be among the second, too.
    bool activate(std::span<const xcb_window_t> windows,
                  std::span<const xcb_window_t> companions) const;

    /// Raises a window and no more.
    bool raise(xcb_window_t window) const;

  private:
    struct Scene;

    [[nodiscard]] Scene look(std::span<const xcb_window_t> windows) const;
    void bringForward(const Scene& scene, std::span<const xcb_window_t> backToFront) const;
    void focus(const Scene& scene, xcb_window_t window) const;
    void ask(xcb_window_t window, xcb_atom_t message, std::uint32_t a, std::uint32_t b = 0,
             std::uint32_t c = 0) const;

    const WindowLink& link_;
};

} // namespace quillon
