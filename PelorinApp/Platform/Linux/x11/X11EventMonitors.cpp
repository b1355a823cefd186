#include "Platform/Linux/x11/X11EventMonitors.h"

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillon {

namespace {

constexpr std::uint64_t buttonMask =
    eventMask(EventType::leftMouseDown) | eventMask(EventType::leftMouseUp) |
    eventMask(EventType::rightMouseDown) | eventMask(EventType::rightMouseUp) |
    eventMask(EventType::otherMouseDown) | eventMask(EventType::otherMouseUp);

/// Nothing for the wheel's buttons, and for one that the user has switched off.
std::optional<EventType> typeOf(unsigned button, bool isDown) {
    switch (button) {
    case 0:
    case 4:
    case 5:
    case 6:
    case 7:
        return std::nullopt;
    case 1:
        return isDown ? EventType::leftMouseDown : EventType::leftMouseUp;
    case 3:
        return isDown ? EventType::rightMouseDown : EventType::rightMouseUp;
    default:
        return isDown ? EventType::otherMouseDown : EventType::otherMouseUp;
    }
}

/// The types of raw events that a monitor with this mask needs.
std::uint32_t rawEvents(std::uint64_t mask) {
    constexpr std::uint64_t downs = eventMask(EventType::leftMouseDown) |
                                    eventMask(EventType::rightMouseDown) |
                                    eventMask(EventType::otherMouseDown);
    std::uint32_t types = 0;
    if ((mask & downs) != 0) {
        types |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    }
    if ((mask & buttonMask & ~downs) != 0) {
        types |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    }
    return types;
}

} // namespace

class X11EventMonitors::Monitor final : public EventMonitor {
  public:
    Monitor(std::weak_ptr<X11EventMonitors*> monitors, std::uint64_t mask,
            std::function<void(EventType)> handler)
        : monitors_(std::move(monitors)), mask_(mask), handler_(std::move(handler)) {}
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    ~Monitor() override {
        if (const auto monitors = monitors_.lock()) {
            (*monitors)->forgetRemoved();
        }
    }

    [[nodiscard]] std::uint64_t mask() const { return mask_; }

    void tell(EventType type) const {
        if ((mask_ & eventMask(type)) != 0) {
            handler_(type);
        }
    }

  private:
    std::weak_ptr<X11EventMonitors*> monitors_;
    std::uint64_t mask_;
    std::function<void(EventType)> handler_;
};

X11EventMonitors::X11EventMonitors(const OwnWindows& ownWindows, PostedEvents& postedEvents,
                                   CaughtPresses& caughtPresses)
    : ownWindows_(ownWindows), postedEvents_(postedEvents), caughtPresses_(caughtPresses),
      self_(std::make_shared<X11EventMonitors*>(this)) {}

X11EventMonitors::~X11EventMonitors() { disconnect(); }

EventMonitorRef X11EventMonitors::addGlobalMonitor(std::uint64_t mask,
                                                   std::function<void(EventType)> handler) {
    if ((mask & buttonMask) == 0 || !connect()) {
        return nullptr;
    }
    auto monitor = std::make_shared<Monitor>(self_, mask, std::move(handler));
    monitors_.push_back(monitor);
    selectWanted();
    return monitor;
}

bool X11EventMonitors::connect() {
    if (connection_ && connection_->isBroken()) {
        disconnect();
    }
    if (connection_) {
        return true;
    }
    connection_ = X11Connection::open();
    if (!connection_ || !mayMonitor()) {
        connection_.reset();
        return false;
    }
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
    // Round trips can bring events in behind the notifier's back.
    aboutToBlock_ = QObject::connect(QAbstractEventDispatcher::instance(),
                                     &QAbstractEventDispatcher::aboutToBlock, notifier_.get(),
                                     [this] { readEvents(); });
    return true;
}

void X11EventMonitors::disconnect() {
    QObject::disconnect(aboutToBlock_);
    if (notifier_) {
        notifier_->setEnabled(false);
    }
    if (isReading_ && notifier_) {
        notifier_.release()->deleteLater(); // it may be what called us
    }
    notifier_.reset();
    connection_.reset();
    selected_ = 0;
    buttonMap_.clear();
    waiting_.clear();
    consumed_.clear();
}

bool X11EventMonitors::mayMonitor() const {
    if (!connection_->hasExtension(&xcb_input_id)) {
        return false;
    }
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_->get(), xcb_input_xi_query_version(connection_->get(), 2, 3), nullptr));
    return version && (version->major_version > 2 ||
                       (version->major_version == 2 && version->minor_version >= 1));
}

/// Only those that some monitor wants: each one would wake the program.
void X11EventMonitors::selectWanted() {
    std::uint64_t masks = 0;
    for (const auto& each : monitors_) {
        if (const auto monitor = each.lock()) {
            masks |= monitor->mask();
        }
    }
    const std::uint32_t wanted = rawEvents(masks);
    if (std::exchange(selected_, wanted) == wanted) {
        return;
    }
    // Of the masters: what a device does comes from it and again from its master.
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = 0;
    } selection;
    selection.mask = wanted;
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &selection.head);
    connection_->sync();
    postedEvents_.forget(); // what was posted so far did not come here
}

/// What the user wants the physical button to be: raw events know nothing of left-handed mice.
unsigned X11EventMonitors::mapped(std::uint32_t button) const {
    return button >= 1 && button <= buttonMap_.size() ? buttonMap_[button - 1] : button;
}

void X11EventMonitors::readMapping() {
    const XcbOwned<xcb_get_pointer_mapping_reply_t> reply(xcb_get_pointer_mapping_reply(
        connection_->get(), xcb_get_pointer_mapping(connection_->get()), nullptr));
    if (reply) {
        const auto* first = xcb_get_pointer_mapping_map(reply.get());
        buttonMap_.assign(first, first + reply->map_len);
    }
}

void X11EventMonitors::readEvents() {
    const bool wasReading = std::exchange(isReading_, true);
    // A handler may let go of the last monitor, and the connection ends with it.
    while (connection_) {
        const XcbOwned<xcb_generic_event_t> event(xcb_poll_for_event(connection_->get()));
        if (!event) {
            break;
        }
        handleEvent(*event);
    }
    if (connection_ && connection_->isBroken()) {
        disconnect();
    }
    isReading_ = wasReading;
}

void X11EventMonitors::handleEvent(const xcb_generic_event_t& event) {
    if (event.response_type == XCB_MAPPING_NOTIFY) {
        buttonMap_.clear();
    }
    if (event.response_type != XCB_GE_GENERIC) {
        return;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    const bool isDown = raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS;
    if (postedEvents_.claim(raw.detail, isDown)) {
        return;
    }
    if (buttonMap_.empty()) {
        readMapping();
    }
    const auto type = typeOf(mapped(raw.detail), isDown);
    if (!type || ownWindows_.contains(windowUnderPointer(raw.deviceid))) {
        return;
    }
    report(*type, raw.sourceid, raw.time);
}

/// At once, unless it may yet be consumed, or something waits that came before it.
void X11EventMonitors::report(EventType type, xcb_input_device_id_t device, xcb_timestamp_t time) {
    const bool mayBeConsumed =
        type == EventType::leftMouseDown && caughtPresses_.mayCatch() && caughtPresses_.whenSettled;
    if (!mayBeConsumed && waiting_.empty()) {
        tell(type, device);
        return;
    }
    waiting_.push_back({type, device, time});
    if (mayBeConsumed) {
        caughtPresses_.whenSettled([weak = std::weak_ptr(self_)] {
            if (const auto self = weak.lock()) {
                (*self)->reportWaiting();
            }
        });
    }
}

/// The first press that waited has been decided upon.
void X11EventMonitors::reportWaiting() {
    bool isFirst = true;
    while (!waiting_.empty()) {
        const Waiting next = waiting_.front();
        if (next.type == EventType::leftMouseDown && !std::exchange(isFirst, false)) {
            return; // its own answer will come
        }
        waiting_.pop_front();
        if (next.type == EventType::leftMouseDown && caughtPresses_.claim(next.device, next.time)) {
            std::erase(consumed_, next.device);
            consumed_.push_back(next.device);
        } else {
            tell(next.type, next.device);
        }
    }
}

/// But for the releases of a press that was consumed: of the device by us, and by the finger.
void X11EventMonitors::tell(EventType type, xcb_input_device_id_t device) {
    if (type == EventType::leftMouseDown) {
        std::erase(consumed_, device);
    } else if (type == EventType::leftMouseUp &&
               std::find(consumed_.begin(), consumed_.end(), device) != consumed_.end()) {
        return;
    }
    const auto monitors = monitors_; // handlers add and remove some
    for (const auto& each : monitors) {
        if (const auto monitor = each.lock()) {
            monitor->tell(type);
        }
    }
}

xcb_window_t X11EventMonitors::windowUnderPointer(xcb_input_device_id_t master) const {
    xcb_window_t window = connection_->root();
    while (true) {
        const XcbOwned<xcb_input_xi_query_pointer_reply_t> reply(xcb_input_xi_query_pointer_reply(
            connection_->get(), xcb_input_xi_query_pointer(connection_->get(), window, master),
            nullptr));
        if (!reply) {
            return window; // just closed, but it was there
        }
        if (reply->same_screen == 0) {
            return reply->root; // none of our windows is on another X screen
        }
        if (reply->child == XCB_WINDOW_NONE) {
            return window;
        }
        window = reply->child;
    }
}

void X11EventMonitors::forgetRemoved() {
    std::erase_if(monitors_, [](const auto& monitor) { return monitor.expired(); });
    if (monitors_.empty()) {
        disconnect();
    } else if (connection_) {
        selectWanted();
    }
}

} // namespace quillon
