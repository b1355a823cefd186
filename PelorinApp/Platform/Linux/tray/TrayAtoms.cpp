#include "Platform/Linux/tray/TrayAtoms.h"

#include "Platform/Linux/x11/AtomBatch.h"

#include <array>
#include <string>

namespace quillon {

namespace {

int screenNumber(const X11Connection& connection) {
    int number = 0;
    for (auto each = xcb_setup_roots_iterator(xcb_get_setup(connection.get())); each.rem > 0;
         xcb_screen_next(&each), ++number) {
        if (each.data->root == connection.root()) {
            return number;
        }
    }
    return 0;
}

} // namespace

TrayAtoms::TrayAtoms(const X11Connection& connection) {
    const std::string selectionName =
        "_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber(connection));
    const std::array<WantedAtom, 13> names{{
        {selectionName, &selection},
        {"MANAGER", &manager},
        {"_NET_SYSTEM_TRAY_OPCODE", &opcode},
        {"_NET_SYSTEM_TRAY_VISUAL", &visual},
        {"_NET_SYSTEM_TRAY_ORIENTATION", &orientation},
        {"_NET_SYSTEM_TRAY_COLORS", &colors},
        {"_XEMBED_INFO", &embedInfo},
        {"_NET_WM_NAME", &windowName},
        {"UTF8_STRING", &utf8String},
        {"_NET_WM_WINDOW_TYPE", &windowType},
        {"_NET_WM_WINDOW_TYPE_DOCK", &dockType},
        {"_NET_CLIENT_LIST", &clientList},
        {"_XROOTPMAP_ID", &wallpaper},
    }};
    internAtoms(connection.get(), names);
}

} // namespace quillon
