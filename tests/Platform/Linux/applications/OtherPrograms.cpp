#include "OtherPrograms.h"

#include <algorithm>

namespace quillon {

OtherPrograms::OtherPrograms()
    : connection_(X11Connection::open()), atoms_(std::make_unique<WindowAtoms>(*connection_)) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK, &mask);
    setSupported({atoms_->restack});
    setDesktop(0);
    list();
}

xcb_window_t OtherPrograms::open(std::uint32_t process, const std::string& className) {
    const xcb_window_t window = xcb_generate_id(connection_->get());
    xcb_create_window(connection_->get(), XCB_COPY_FROM_PARENT, window, connection_->root(), 100,
                      50, 300, 200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    if (process != 0) {
        set(window, atoms_->process, XCB_ATOM_CARDINAL, {process});
    }
    setText(window, atoms_->windowClass, className + '\0' + className + '\0');
    set(window, atoms_->wmState, atoms_->wmState, {1, 0});
    set(window, atoms_->desktop, XCB_ATOM_CARDINAL, {0});
    windows_.push_back(window);
    list();
    return window;
}

void OtherPrograms::close(xcb_window_t window) {
    xcb_destroy_window(connection_->get(), window);
    std::erase(windows_, window);
    list();
}

void OtherPrograms::set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                        const std::vector<std::uint32_t>& values) const {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    connection_->sync();
}

void OtherPrograms::setText(xcb_window_t window, xcb_atom_t property,
                            const std::string& text) const {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window, property,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
    connection_->sync();
}

void OtherPrograms::remove(xcb_window_t window, xcb_atom_t property) const {
    xcb_delete_property(connection_->get(), window, property);
    connection_->sync();
}

void OtherPrograms::setDesktop(std::uint32_t desktop) const {
    set(connection_->root(), atoms_->currentDesktop, XCB_ATOM_CARDINAL, {desktop});
}

void OtherPrograms::setActive(xcb_window_t window) const {
    set(connection_->root(), atoms_->activeWindow, XCB_ATOM_WINDOW, {window});
}

void OtherPrograms::setSupported(const std::vector<xcb_atom_t>& requests) const {
    set(connection_->root(), atoms_->supported, XCB_ATOM_ATOM, requests);
}

std::vector<OtherPrograms::Request> OtherPrograms::requests() const {
    connection_->sync();
    std::vector<Request> found;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        if ((event->response_type & 0x7FU) == XCB_CLIENT_MESSAGE) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            Request request{message.window, message.type, {}};
            std::copy_n(message.data.data32, request.values.size(), request.values.begin());
            found.push_back(request);
        }
    }
    return found;
}

void OtherPrograms::list() const {
    set(connection_->root(), atoms_->clientListStacking, XCB_ATOM_WINDOW, windows_);
}

} // namespace quillon
