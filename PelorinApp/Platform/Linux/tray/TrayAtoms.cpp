#include "Platform/Linux/tray/TrayAtoms.h"

#include <array>
#include <string>
#include <utility>

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
    const std::array<std::pair<xcb_atom_t*, std::string>, 13> names{{
        {&selection, "_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber(connection))},
        {&manager, "MANAGER"},
        {&opcode, "_NET_SYSTEM_TRAY_OPCODE"},
        {&visual, "_NET_SYSTEM_TRAY_VISUAL"},
        {&orientation, "_NET_SYSTEM_TRAY_ORIENTATION"},
        {&colors, "_NET_SYSTEM_TRAY_COLORS"},
        {&embedInfo, "_XEMBED_INFO"},
        {&windowName, "_NET_WM_NAME"},
        {&utf8String, "UTF8_STRING"},
        {&windowType, "_NET_WM_WINDOW_TYPE"},
        {&dockType, "_NET_WM_WINDOW_TYPE_DOCK"},
        {&clientList, "_NET_CLIENT_LIST"},
        {&wallpaper, "_XROOTPMAP_ID"},
    }};
    std::array<xcb_intern_atom_cookie_t, names.size()> asked{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string& name = names[i].second;
        asked[i] = xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()),
                                   name.data());
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        const XcbOwned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), asked[i], nullptr));
        *names[i].first = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

} // namespace quillon
