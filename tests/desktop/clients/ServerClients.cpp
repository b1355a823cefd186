#include "Probe.h"

#include <cstdio>
#include <cstring>

#include <xcb/res.h>

/// One line for each connection of a process: the first of the resource identifiers that are its.
int listConnections(const Display& display, std::uint32_t process) {
    const Owned<xcb_res_query_version_reply_t> version(xcb_res_query_version_reply(
        display.connection, xcb_res_query_version(display.connection, 1, 2), nullptr));
    const xcb_res_client_id_spec_t everybody{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Owned<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        display.connection, xcb_res_query_client_ids(display.connection, 1, &everybody), nullptr));
    if (!version || !reply) {
        std::fputs("x11_probe: this display does not tell whose connections it has\n", stderr);
        return 1;
    }
    for (auto i = xcb_res_query_client_ids_ids_iterator(reply.get()); i.rem > 0;
         xcb_res_client_id_value_next(&i)) {
        if (xcb_res_client_id_value_value_length(i.data) > 0 &&
            *xcb_res_client_id_value_value(i.data) == process) {
            std::printf("%u\n", i.data->spec.client);
        }
    }
    return 0;
}

int killConnection(const Display& display, std::uint32_t resource) {
    if (!accepted(display, xcb_kill_client_checked(display.connection, resource))) {
        std::fputs("x11_probe: nobody has this resource\n", stderr);
        return 1;
    }
    return 0;
}

int tellOwner(const Display& display, const char* selection) {
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        display.connection,
        xcb_intern_atom(display.connection, 0, static_cast<std::uint16_t>(std::strlen(selection)),
                        selection),
        nullptr));
    const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        display.connection,
        xcb_get_selection_owner(display.connection, atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE}),
        nullptr));
    std::puts(owner && owner->owner != XCB_WINDOW_NONE ? "somebody" : "nobody");
    return 0;
}
