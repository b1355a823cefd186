#pragma once

#include "Platform/Linux/applications/WindowAtoms.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// Another program with windows and, in one, the window manager that lists them and gets the
/// requests about them, but does nothing about those.
class OtherPrograms {
  public:
    OtherPrograms();

    /// A window in front of all others, which says of itself what a program usually does.
    xcb_window_t open(std::uint32_t process, const std::string& className);
    void close(xcb_window_t window);

    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
             const std::vector<std::uint32_t>& values) const;
    void setText(xcb_window_t window, xcb_atom_t property, const std::string& text) const;
    void remove(xcb_window_t window, xcb_atom_t property) const;

    /// Makes it known which desktop is shown, and which window is active.
    void setDesktop(std::uint32_t desktop) const;
    void setActive(xcb_window_t window) const;
    void setSupported(const std::vector<xcb_atom_t>& requests) const;

    struct Request {
        xcb_window_t window;
        xcb_atom_t type;
        std::array<std::uint32_t, 5> values;
    };
    /// What was asked of the window manager since the last call.
    [[nodiscard]] std::vector<Request> requests() const;

    [[nodiscard]] const X11Connection& connection() const { return *connection_; }
    [[nodiscard]] const WindowAtoms& atoms() const { return *atoms_; }

  private:
    void list() const;

    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<WindowAtoms> atoms_;
    std::vector<xcb_window_t> windows_; // back to front
};

} // namespace quillon
