#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/XEmbedTray.h"

#include <algorithm>

namespace quillon {

namespace {

std::optional<EventType> clickOf(xcb_button_t button) {
    switch (button) {
    case XCB_BUTTON_INDEX_1:
        return EventType::leftMouseUp;
    case XCB_BUTTON_INDEX_3:
        return EventType::rightMouseUp;
    default:
        return std::nullopt;
    }
}

} // namespace

void XEmbedTray::handleEvent(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7FU) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == screen_.atoms().manager && message.format == 32 &&
            message.data.data32[1] == screen_.atoms().selection) {
            findTray();
            trayChanged_();
        }
        return;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (manager_ && destroyed.window == manager_->owner) {
            findTray();
            trayChanged_();
            return;
        }
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (manager_ && property.window == manager_->owner) {
            refreshTrayManager(*manager_, screen_.connection(), screen_.atoms());
            lookAtPanelNowAndSoon();
        } else if (window_ && property.atom == screen_.atoms().wallpaper) {
            lookAtPanelNowAndSoon(); // a panel may let it shine through
        }
        return;
    }
    default:
        break;
    }
    if (window_) {
        handleWindowEvent(event);
    }
}

void XEmbedTray::handleWindowEvent(const xcb_generic_event_t& event) {
    const auto isOurs = [this](xcb_window_t window) { return window == window_->id(); };
    switch (event.response_type & 0x7FU) {
    case XCB_DESTROY_NOTIFY:
        if (isOurs(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window)) {
            dockLater();
        }
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto& reparented = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
        if (!isOurs(reparented.window)) {
            break;
        }
        if (reparented.parent == screen_.connection().root()) {
            // Thrown out, mostly by a tray that ends: what is left would be a window on the
            // desktop.
            dockLater();
        } else {
            lookAtPanelNowAndSoon();
        }
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
        if (isOurs(reinterpret_cast<const xcb_configure_notify_event_t&>(event).window)) {
            lookAtPanelNowAndSoon();
        }
        break;
    case XCB_MAP_NOTIFY:
        if (isOurs(reinterpret_cast<const xcb_map_notify_event_t&>(event).window)) {
            lookAtPanelNowAndSoon();
        }
        break;
    case XCB_BUTTON_PRESS:
        toolTip_.dismiss();
        break;
    case XCB_BUTTON_RELEASE: {
        const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
        if (isOurs(release.event)) {
            click(release);
        }
        break;
    }
    case XCB_ENTER_NOTIFY:
        if (reinterpret_cast<const xcb_enter_notify_event_t&>(event).mode ==
            XCB_NOTIFY_MODE_NORMAL) {
            toolTip_.pointerEntered();
        }
        break;
    case XCB_LEAVE_NOTIFY:
        toolTip_.dismiss();
        break;
    default:
        break;
    }
}

void XEmbedTray::click(const xcb_button_release_event_t& event) {
    const auto type = clickOf(event.detail);
    const auto place = placeOf(screen_.connection(), window_->id());
    const bool isWithin = place && event.event_x >= 0 && event.event_x < place->width &&
                          event.event_y >= 0 && event.event_y < place->height;
    if (!type || !isWithin) {
        return;
    }
    const double unit = std::min(place->width, place->height) / usualThickness;
    content_.clicked({*type, event.time, event.root_x, event.root_y},
                     Point{event.event_x / unit, event.event_y / unit});
}

} // namespace quillon
