#include "Platform/Linux/applications/WindowAtoms.h"

#include "Platform/Linux/x11/AtomBatch.h"

#include <vector>

namespace quillon {

namespace {

using NamedKind = std::pair<std::string_view, WindowKind>;

constexpr std::array<NamedKind, std::tuple_size_v<decltype(WindowAtoms::kinds)>> namedKinds{{
    {"_NET_WM_WINDOW_TYPE_NORMAL", WindowKind::ordinary},
    {"_NET_WM_WINDOW_TYPE_DIALOG", WindowKind::ordinary},
    {"_NET_WM_WINDOW_TYPE_DESKTOP", WindowKind::desktop},
    {"_NET_WM_WINDOW_TYPE_UTILITY", WindowKind::palette},
    {"_NET_WM_WINDOW_TYPE_TOOLBAR", WindowKind::palette},
    {"_NET_WM_WINDOW_TYPE_MENU", WindowKind::palette}, // one that was torn off
    {"_NET_WM_WINDOW_TYPE_DOCK", WindowKind::dock},
    {"_NET_WM_WINDOW_TYPE_NOTIFICATION", WindowKind::notice},
    {"_NET_WM_WINDOW_TYPE_SPLASH", WindowKind::notice},
    {"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_POPUP_MENU", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_COMBO", WindowKind::menu},
    {"_NET_WM_WINDOW_TYPE_TOOLTIP", WindowKind::tip},
    {"_NET_WM_WINDOW_TYPE_DND", WindowKind::tip},
}};

} // namespace

WindowAtoms::WindowAtoms(const X11Connection& connection) {
    std::vector<WantedAtom> wanted{
        {"_NET_ACTIVE_WINDOW", &activeWindow},
        {"_NET_CLIENT_LIST", &clientList},
        {"_NET_CLIENT_LIST_STACKING", &clientListStacking},
        {"_NET_CURRENT_DESKTOP", &currentDesktop},
        {"_NET_SUPPORTED", &supported},
        {"_NET_WM_DESKTOP", &desktop},
        {"_NET_WM_STATE", &state},
        {"WM_STATE", &wmState},
        {"_NET_WM_WINDOW_TYPE", &type},
        {"_NET_WM_PID", &process},
        {"WM_CLIENT_MACHINE", &machine},
        {"WM_CLASS", &windowClass},
        {"_GTK_APPLICATION_ID", &applicationId},
        {"_NET_FRAME_EXTENTS", &frameExtents},
        {"_GTK_FRAME_EXTENTS", &shadowExtents},
        {"_NET_WM_STATE_HIDDEN", &hidden},
        {"_NET_WM_STATE_SHADED", &shaded},
        {"_NET_WM_STATE_SKIP_TASKBAR", &skipTaskbar},
        {"_NET_RESTACK_WINDOW", &restack},
        {"_QUILLON_TIME", &time},
    };
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        kinds[i].second = namedKinds[i].second;
        wanted.emplace_back(namedKinds[i].first, &kinds[i].first);
    }
    internAtoms(connection.get(), wanted);
}

} // namespace quillon
