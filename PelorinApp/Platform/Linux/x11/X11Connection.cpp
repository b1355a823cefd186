#include "Platform/Linux/x11/X11Connection.h"

#include <fcntl.h>

namespace quillon {

std::unique_ptr<X11Connection> X11Connection::open() {
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) {
        xcb_screen_next(&screens);
    }
    fcntl(xcb_get_file_descriptor(connection), F_SETFD, FD_CLOEXEC);
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data));
}

X11Connection::~X11Connection() { xcb_disconnect(connection_); }

std::optional<std::uint8_t> X11Connection::firstEvent(xcb_extension_t* extension) const {
    const auto* data = xcb_get_extension_data(connection_, extension);
    return data != nullptr && data->present != 0 ? std::optional(data->first_event) : std::nullopt;
}

xcb_atom_t X11Connection::atom(std::string_view name) const {
    const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void X11Connection::sync() const {
    const XcbOwned<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

} // namespace quillon
