#include "Platform/Linux/x11/X11Displays.h"

#include "Platform/Linux/x11/X11Properties.h"

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace quillon {

namespace {

bool canListMonitors(const X11Connection& connection) {
    if (!connection.hasExtension(&xcb_randr_id)) {
        return false;
    }
    const XcbOwned<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        connection.get(), xcb_randr_query_version(connection.get(), 1, 5), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

/// The monitors, the primary one first. The whole root window where the server knows of none.
std::vector<PixelRect> readMonitors(const X11Connection& connection) {
    std::vector<PixelRect> monitors;
    if (canListMonitors(connection)) {
        const XcbOwned<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
            connection.get(), xcb_randr_get_monitors(connection.get(), connection.root(), 1),
            nullptr));
        if (reply) {
            for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
                 xcb_randr_monitor_info_next(&each)) {
                const auto& info = *each.data;
                const auto place = info.primary != 0 ? monitors.begin() : monitors.end();
                monitors.insert(place, PixelRect{info.x, info.y, info.width, info.height});
            }
        }
    }
    std::erase_if(monitors, [](const PixelRect& m) { return m.width <= 0 || m.height <= 0; });
    if (monitors.empty()) {
        // Asked for, not taken from the connection's set-up, which grows stale.
        const XcbOwned<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(
            connection.get(), xcb_get_geometry(connection.get(), connection.root()), nullptr));
        monitors.push_back(root ? PixelRect{0, 0, root->width, root->height}
                                : PixelRect{0, 0, connection.screen().width_in_pixels,
                                            connection.screen().height_in_pixels});
    }
    return monitors;
}

} // namespace

Point X11Displays::mouseLocation() const {
    if (eventLocation_) {
        return *eventLocation_;
    }
    if (connection_ == nullptr) {
        return {};
    }
    const XcbOwned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        connection_->get(), xcb_query_pointer(connection_->get(), connection_->root()), nullptr));
    return pointer ? geometry_->toPoints(pointer->root_x, pointer->root_y) : Point{};
}

std::span<const Rect> X11Displays::screens() const {
    return geometry_ ? geometry_->frames() : std::span<const Rect>{};
}

void X11Displays::setGeometryHandler(std::function<void(const GeometryRef&)> handler) {
    geometryHandler_ = std::move(handler);
    if (geometryHandler_ && geometry_) {
        geometryHandler_(geometry_);
    }
}

void X11Displays::follow(X11Connection& connection) {
    connection_ = &connection;
    resourceManager_ = connection.atom("RESOURCE_MANAGER");
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_EVENT_MASK, &mask);
    if (connection.hasExtension(&xcb_randr_id)) {
        xcb_randr_select_input(connection.get(), connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    readGeometry();
}

void X11Displays::handleEvent(const xcb_generic_event_t& event) {
    const unsigned type = event.response_type & 0x7FU;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (property.atom == resourceManager_) {
            readGeometry();
        }
        return;
    }
    const auto randr = connection_->firstEvent(&xcb_randr_id);
    const bool randrEvent = randr && (type == *randr + unsigned{XCB_RANDR_SCREEN_CHANGE_NOTIFY} ||
                                      type == *randr + unsigned{XCB_RANDR_NOTIFY});
    if (randrEvent || type == XCB_CONFIGURE_NOTIFY) {
        readGeometry();
    }
}

void X11Displays::readGeometry() {
    const auto resources = text(*connection_, connection_->root(), resourceManager_);
    auto geometry = std::make_shared<const ScreenGeometry>(
        readMonitors(*connection_), scaleFromResources(resources.value_or("")));
    if (geometry_ && *geometry == *geometry_) {
        return;
    }
    geometry_ = std::move(geometry);
    if (geometryHandler_) {
        geometryHandler_(geometry_);
    }
}

} // namespace quillon
