#pragma once

#include "Platform/Linux/applications/WindowFacts.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <utility>

namespace quillon {

/// The names by which programs and window managers speak of windows, as this server numbers them.
struct WindowAtoms {
    explicit WindowAtoms(const X11Connection& connection);

    // Of the root window.
    xcb_atom_t activeWindow, clientList, clientListStacking, currentDesktop, supported;
    // Of a window.
    xcb_atom_t desktop, state, wmState, type, process, machine, windowClass, applicationId;
    xcb_atom_t frameExtents, shadowExtents;
    // Among its states.
    xcb_atom_t hidden, shaded, skipTaskbar;
    // Asked of the window manager.
    xcb_atom_t restack;
    // Ours.
    xcb_atom_t time;

    std::array<std::pair<xcb_atom_t, WindowKind>, 14> kinds;
};

} // namespace quillon
