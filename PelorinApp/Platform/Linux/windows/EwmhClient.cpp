#include "Platform/Linux/windows/EwmhClient.h"

#include "Platform/Linux/x11/AtomBatch.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <QGuiApplication>

#include <array>
#include <string>
#include <utility>

namespace quillon {

namespace {

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;
constexpr std::uint32_t sourceApplication = 1;
constexpr std::uint32_t stateAdd = 1;
constexpr std::uint32_t withdrawnState = 0; // or there is no state at all

xcb_window_t nativeId(const QWindow& window) { return static_cast<xcb_window_t>(window.winId()); }

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < number && screens.rem > 1; ++i) {
        xcb_screen_next(&screens);
    }
    return screens.data;
}

/// A window's first 32-bit value of this property, or 0.
std::uint32_t firstValue(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
    return cardinal(connection, window, property).value_or(0);
}

} // namespace

EwmhClient::EwmhClient(std::function<std::uint32_t()> inputTime)
    : inputTime_(std::move(inputTime)) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return;
    }
    connection_ = x11->connection();
    int screenNumber = 0;
    std::free([&] {
        char* host = nullptr;
        int display = 0;
        xcb_parse_display(nullptr, &host, &display, &screenNumber);
        return host;
    }());
    root_ = screenOf(connection_, screenNumber)->root;

    const std::string compositor = "_NET_WM_CM_S" + std::to_string(screenNumber);
    const std::array<WantedAtom, 12> names{{
        {"_NET_ACTIVE_WINDOW", &atoms_.activeWindow},
        {compositor, &atoms_.compositor},
        {"_NET_WM_DESKTOP", &atoms_.desktop},
        {"_NET_WM_STATE", &atoms_.state},
        {"_NET_WM_STATE_ABOVE", &atoms_.stateAbove},
        {"_NET_WM_STATE_SKIP_PAGER", &atoms_.stateSkipPager},
        {"_NET_WM_STATE_SKIP_TASKBAR", &atoms_.stateSkipTaskbar},
        {"_NET_WM_STATE_STICKY", &atoms_.stateSticky},
        {"_NET_SUPPORTING_WM_CHECK", &atoms_.supportingCheck},
        {"_NET_WM_USER_TIME", &atoms_.userTime},
        {"_NET_WM_USER_TIME_WINDOW", &atoms_.userTimeWindow},
        {"WM_STATE", &atoms_.wmState},
    }};
    internAtoms(connection_, names);
}

bool EwmhClient::isWithdrawn(QWindow& window) const {
    return connection_ == nullptr || window.handle() == nullptr ||
           firstValue(connection_, nativeId(window), atoms_.wmState) == withdrawnState;
}

void EwmhClient::markAccessory(QWindow& window) const {
    if (connection_ == nullptr) {
        return;
    }
    const std::array<xcb_atom_t, 4> states{atoms_.stateSkipTaskbar, atoms_.stateSkipPager,
                                           atoms_.stateSticky, atoms_.stateAbove};
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, nativeId(window), atoms_.state,
                        XCB_ATOM_ATOM, 32, states.size(), states.data());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, nativeId(window), atoms_.desktop,
                        XCB_ATOM_CARDINAL, 32, 1, &everyDesktop);
}

void EwmhClient::confirmAccessory(QWindow& window) const {
    if (connection_ == nullptr) {
        return;
    }
    tellManager(window, atoms_.state, stateAdd, atoms_.stateSkipTaskbar, atoms_.stateSkipPager,
                sourceApplication);
    tellManager(window, atoms_.state, stateAdd, atoms_.stateSticky, atoms_.stateAbove,
                sourceApplication);
    tellManager(window, atoms_.desktop, everyDesktop, sourceApplication);
    xcb_flush(connection_);
}

void EwmhClient::show(QWindow& window, const std::function<void()>& map) {
    window.create();
    const std::uint32_t time = userTime();
    setUserTime(window, time);
    if (map) {
        map();
    } else {
        window.show();
    }
    // The toolkit has written the time of the last input that it has seen itself.
    setUserTime(window, time);
    window.raise();
    activate(window, time);
}

void EwmhClient::activate(QWindow& window) { activate(window, userTime()); }

bool EwmhClient::isComposited() const {
    if (connection_ == nullptr) {
        return false;
    }
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atoms_.compositor), nullptr));
    return reply && reply->owner != XCB_NONE;
}

std::uint32_t EwmhClient::userTime() {
    const std::uint32_t known = inputTime_ ? inputTime_() : 0;
    return known != 0 || connection_ == nullptr ? known : serverTime();
}

std::uint32_t EwmhClient::serverTime() {
    if (!clock_) {
        // Of our own: the toolkit's would take the answer for itself.
        clock_ = X11Connection::open();
    }
    if (!clock_ || clock_->isBroken()) {
        return XCB_CURRENT_TIME;
    }
    const xcb_window_t window = xcb_generate_id(clock_->get());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(clock_->get(), XCB_COPY_FROM_PARENT, window, root_, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_change_property(clock_->get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_destroy_window(clock_->get(), window);
    clock_->sync();
    std::uint32_t time = XCB_CURRENT_TIME;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(clock_->get())}) {
        if ((event->response_type & 0x7FU) == XCB_PROPERTY_NOTIFY) {
            time = reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
        }
    }
    return time;
}

bool EwmhClient::hasWindowManager() const {
    const xcb_window_t manager = firstValue(connection_, root_, atoms_.supportingCheck);
    return manager != XCB_NONE &&
           firstValue(connection_, manager, atoms_.supportingCheck) == manager;
}

void EwmhClient::setUserTime(QWindow& window, std::uint32_t time) const {
    if (connection_ == nullptr || time == XCB_CURRENT_TIME) {
        return;
    }
    const xcb_window_t own = nativeId(window);
    const xcb_window_t apart = firstValue(connection_, own, atoms_.userTimeWindow);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, apart != XCB_NONE ? apart : own,
                        atoms_.userTime, XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_flush(connection_);
}

void EwmhClient::activate(QWindow& window, std::uint32_t time) const {
    if (connection_ == nullptr || !hasWindowManager()) {
        window.requestActivate();
        return;
    }
    tellManager(window, atoms_.activeWindow, sourceApplication, time);
    xcb_flush(connection_);
}

void EwmhClient::tellManager(QWindow& window, xcb_atom_t message, std::uint32_t a, std::uint32_t b,
                             std::uint32_t c, std::uint32_t d) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = nativeId(window);
    event.type = message;
    event.data.data32[0] = a;
    event.data.data32[1] = b;
    event.data.data32[2] = c;
    event.data.data32[3] = d;
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

} // namespace quillon
