#include "Platform/Linux/tray/TrayAtoms.h"

#include "Platform/Linux/x11/AtomBatch.h"
#include "Platform/Linux/x11/SelectionOwner.h"

#include <array>
#include <string>

namespace quillon {

TrayAtoms::TrayAtoms(const X11Connection& connection) {
    const std::string selectionName = selectionOfScreen("_NET_SYSTEM_TRAY", connection);
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
