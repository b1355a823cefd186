#include "Platform/Linux/x11/DesktopSwitch.h"

#include "Platform/Linux/x11/WindowManager.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <poll.h>

namespace quillon {

namespace {

using Clock = std::chrono::steady_clock;

/// Longer than any window manager needs when it is alive. One that has just been started may miss
/// a request, so there are several tries; they name the desktop, so a late one does no harm.
constexpr std::chrono::milliseconds patience{250};
constexpr int tries = 4;

/// Waits for an event of this connection until the deadline; null when it passes.
XcbOwned<xcb_generic_event_t> nextEvent(const X11Connection& connection,
                                        Clock::time_point deadline) {
    for (;;) {
        if (auto* event = xcb_poll_for_event(connection.get())) {
            return XcbOwned<xcb_generic_event_t>(event);
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0 || connection.isBroken()) {
            return nullptr;
        }
        pollfd source{connection.descriptor(), POLLIN, 0};
        poll(&source, 1, static_cast<int>(left));
    }
}

} // namespace

bool DesktopSwitch::connect() {
    if (connection_ && !connection_->isBroken()) {
        return true;
    }
    connection_ = X11Connection::open();
    if (!connection_) {
        return false;
    }
    currentDesktop_ = connection_->atom("_NET_CURRENT_DESKTOP");
    numberOfDesktops_ = connection_->atom("_NET_NUMBER_OF_DESKTOPS");
    desktopLayout_ = connection_->atom("_NET_DESKTOP_LAYOUT");
    timeAtom_ = connection_->atom("_QUILLON_TIME");
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    window_ = xcb_generate_id(connection_->get());
    xcb_create_window(connection_->get(), 0, window_, connection_->root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return true;
}

std::optional<std::string> DesktopSwitch::move(DesktopDirection direction) {
    const std::scoped_lock lock(mutex_);
    if (!connect()) {
        return "no X server to be reached";
    }
    const auto count = cardinal(*connection_, connection_->root(), numberOfDesktops_);
    const auto current = cardinal(*connection_, connection_->root(), currentDesktop_);
    const std::string manager = windowManagerName(*connection_);
    if (!count || !current || manager.empty()) {
        return "no window manager that knows desktops is running";
    }
    const auto layout = cardinals(*connection_, connection_->root(), desktopLayout_);
    const auto grid =
        DesktopGrid::fromLayout(*count, layout.value_or(std::vector<std::uint32_t>{}));
    auto target = grid.neighbour(*current, direction, RowEnd::stop);
    if (!target) {
        target = grid.neighbour(*current, direction, rowEndOf(*connection_, manager));
    }
    if (!target) {
        return std::nullopt;
    }
    bool arrived = false;
    for (int i = 0; i < tries && !arrived; ++i) {
        request(*target);
        arrived = waitUntilCurrent(*target);
    }
    if (!arrived) {
        return manager + " did not switch to desktop " + std::to_string(*target + 1);
    }
    return std::nullopt;
}

/// Window managers hold requests without a time for those of old programs and may refuse them.
xcb_timestamp_t DesktopSwitch::serverTime() const {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_APPEND, window_, timeAtom_,
                        XCB_ATOM_CARDINAL, 8, 0, nullptr);
    xcb_flush(connection_->get());
    const auto deadline = Clock::now() + patience;
    while (const auto event = nextEvent(*connection_, deadline)) {
        if ((event->response_type & 0x7FU) == XCB_PROPERTY_NOTIFY) {
            const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if (property.window == window_) {
                return property.time;
            }
        }
    }
    return XCB_CURRENT_TIME;
}

void DesktopSwitch::request(std::uint32_t desktop) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = connection_->root();
    message.type = currentDesktop_;
    message.data.data32[0] = desktop;
    message.data.data32[1] = serverTime();
    xcb_send_event(connection_->get(), 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

bool DesktopSwitch::waitUntilCurrent(std::uint32_t desktop) const {
    // The root's properties change all day long, so they are watched only for this moment.
    const auto watch = [this](std::uint32_t mask) {
        xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK,
                                     &mask);
        xcb_flush(connection_->get());
    };
    watch(XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto deadline = Clock::now() + patience;
    bool arrived = cardinal(*connection_, connection_->root(), currentDesktop_) == desktop;
    while (!arrived && nextEvent(*connection_, deadline)) {
        arrived = cardinal(*connection_, connection_->root(), currentDesktop_) == desktop;
    }
    watch(XCB_EVENT_MASK_NO_EVENT);
    return arrived;
}

} // namespace quillon
