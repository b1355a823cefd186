#pragma once

#include "Platform/Linux/x11/X11Connection.h"

namespace quillon {

/// The names that panels and what lies in them talk by.
struct TrayAtoms {
    /// Waits for one answer of the server.
    explicit TrayAtoms(const X11Connection& connection);

    xcb_atom_t selection; // whose owner is the tray of this screen
    xcb_atom_t manager;
    xcb_atom_t opcode;
    xcb_atom_t visual;
    xcb_atom_t orientation;
    xcb_atom_t colors;
    xcb_atom_t embedInfo;
    xcb_atom_t windowName;
    xcb_atom_t utf8String;
    xcb_atom_t windowType;
    xcb_atom_t dockType;
    xcb_atom_t clientList;
    xcb_atom_t wallpaper;
};

} // namespace quillon
