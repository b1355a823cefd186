#include "Platform/Linux/applications/WindowLink.h"

#include <xcb/res.h>

#include <utility>

namespace quillon {

std::unique_ptr<WindowLink> WindowLink::open() {
    auto connection = X11Connection::open();
    return connection ? std::unique_ptr<WindowLink>(new WindowLink(std::move(connection)))
                      : nullptr;
}

WindowLink::WindowLink(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), atoms_(*connection_),
      resourceMask_(xcb_get_setup(connection_->get())->resource_id_mask),
      knowsProcesses_(connection_->hasExtension(&xcb_res_id)),
      window_(xcb_generate_id(connection_->get())) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(get(), 0, window_, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

void WindowLink::askTime() const {
    xcb_change_property(get(), XCB_PROP_MODE_APPEND, window_, atoms_.time, XCB_ATOM_CARDINAL, 8, 0,
                        nullptr);
}

xcb_timestamp_t WindowLink::takeTime() const {
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_queued_event(get())}) {
        if ((event->response_type & 0x7FU) == XCB_PROPERTY_NOTIFY) {
            time = reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
        }
    }
    return time;
}

} // namespace quillon
