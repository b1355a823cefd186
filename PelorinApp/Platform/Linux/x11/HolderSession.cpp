#include "Platform/Linux/x11/HolderSession.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <poll.h>

namespace quillon {

HolderSession::HolderSession(const X11Connection& connection, const HolderHost& host)
    : connection_(connection), host_(host), probe_(connection), wheel_(connection),
      leftPress_(connection), poster_(connection, host.postedEvents),
      devices_(connection, poster_, host.reversed,
               [this](const ScrollNotch& notch) { decideNotch(notch); }),
      events_(connection, wheel_),
      hold_(connection, probe_, wheel_, devices_, events_, host.diagnostic), chord_(connection),
      guard_(host.watchdog, host.diagnostic) {
    host_.postedEvents.forget(); // what a session before this one has not carried out
    selectDeviceChanges();
}

HolderSession::~HolderSession() {
    if (!connection_.isBroken()) {
        disarm();
        connection_.sync(); // a press may have been caught until now
        handleEvents();
        postTurned();
        hold_.settleRelease();
        poster_.releaseAll();
        // A server that cannot write to us any more drops what it has yet to read.
        connection_.sync();
    }
    for (const auto& done : settled_) {
        done();
    }
}

void HolderSession::selectDeviceChanges() const {
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_.get(), xcb_input_xi_query_version(connection_.get(), 2, 3), nullptr));
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL, 1};
        std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
    } selection;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.head);
}

bool HolderSession::run() {
    for (;;) {
        if (!apply(host_.takeOrders())) {
            return true;
        }
        handleEvents();
        settle();
        if (connection_.isBroken() || (isArmed() && (!watch_ || watch_->isBroken()))) {
            return false;
        }
        hold_.settleRelease();
        if (isLookDue_ && Clock::now() >= nextLook_) {
            look();
            continue; // its round trips may have brought events in
        }
        tellWatchdog(isHolding());
        waitForNews();
    }
}

void HolderSession::settle() {
    if (!settled_.empty()) {
        connection_.sync();
        handleEvents();
        for (const auto& done : std::exchange(settled_, {})) {
            done();
        }
    }
}

bool HolderSession::apply(HolderOrders orders) {
    std::move(orders.settled.begin(), orders.settled.end(), std::back_inserter(settled_));
    if (orders.stop) {
        return false;
    }
    isPanicked_ = orders.isPanicked;
    if (orders.changed && !isPanicked_) {
        armed_ = std::move(orders.armed);
        geometry_ = std::move(orders.geometry);
        isLookDue_ = true;
        holdLeftPress();
    }
    for (const PostedButton& posted : orders.posts) {
        post(posted);
    }
    if (orders.hasTaps && !chord_.isTaken()) {
        if (!chord_.take()) {
            host_.diagnostic(std::string("⚠️ Another program has ") + PanicChord::name +
                             "; it will not switch the tools off");
        }
    } else if (!orders.hasTaps && chord_.isTaken()) {
        chord_.release();
    }
    adjustToArmed();
    return true;
}

void HolderSession::adjustToArmed() {
    if (isArmed() && !watch_) {
        watch_ = PointerWatch::start();
    } else if (!isArmed()) {
        watch_.reset();
        hold_.letGo();
    }
    if (!isArmedForPress()) {
        releaseLeftPress();
    }
}

void HolderSession::releaseLeftPress() {
    if (leftPress_.isTaken()) {
        leftPress_.release();
    }
}

/// Wherever the pointer is: fingers that rest say for themselves how short this will be.
void HolderSession::holdLeftPress() {
    if (!isArmedForPress() || leftPress_.isTaken()) {
        return;
    }
    ensureGuard();
    if (!guard_.isRunning()) {
        return;
    }
    const PointerDevices& pointers = hold_.pointers();
    if (poster_.buttonsDown() == 0) {
        poster_.useDevice(pointers);
    }
    host_.caughtPresses.setMayCatch(CaughtPress::Kind::left);
    if (leftPress_.take(pointers.master)) {
        wasLeftPressRefused_ = false;
        return;
    }
    if (!std::exchange(wasLeftPressRefused_, true)) {
        host_.diagnostic(
            "⚠️ Another program holds the left button; presses of it are left alone "
            "until it lets go");
    }
}

/// Holds nothing until the taps are heard of again.
void HolderSession::disarm() {
    armed_ = std::make_shared<ArmedTaps>();
    adjustToArmed();
}

bool HolderSession::isInBand(const PointerProbe::State& pointer) const {
    if (!pointer.isOnOurScreen) {
        return false;
    }
    return areArmedAt(armed_->scrolls, geometry_->toPoints(pointer.x, pointer.y));
}

bool HolderSession::areArmedAt(const ArmedPlaces& places, Point place) const {
    return std::any_of(places.begin(), places.end(),
                       [&](const ArmedAt& armedAt) { return armedAt(place, geometry_->frames()); });
}

void HolderSession::handleEvents() {
    while (const auto event = events_.next()) {
        followReversal();
        handleEvent(*event);
        tellWatchdog(isHolding()); // events may come faster than they can be dealt with
    }
}

void HolderSession::handleEvent(xcb_generic_event_t& event) {
    // The highest bit marks what another client sent: it is no input and froze nothing.
    switch (event.response_type) {
    case XCB_BUTTON_PRESS:
        decideWheel(reinterpret_cast<const xcb_button_press_event_t&>(event));
        break;
    case XCB_BUTTON_RELEASE:
        wheelReleased(reinterpret_cast<const xcb_button_release_event_t&>(event));
        break;
    case XCB_KEY_PRESS:
        panicked();
        break;
    case XCB_MAPPING_NOTIFY:
        chord_.follow(reinterpret_cast<xcb_mapping_notify_event_t&>(event));
        break;
    case XCB_GE_GENERIC:
        handleExtensionEvent(reinterpret_cast<const xcb_ge_generic_event_t&>(event));
        break;
    default:
        break;
    }
}

void HolderSession::handleExtensionEvent(const xcb_ge_generic_event_t& event) {
    if (leftPress_.hasCaught(event)) {
        decideLeftPress(reinterpret_cast<const xcb_input_button_press_event_t&>(event));
        return;
    }
    if (event.event_type == XCB_INPUT_HIERARCHY) {
        hold_.pointersHaveChanged();
    } else {
        devices_.handle(event);
    }
    isLookDue_ = true;
}

void HolderSession::panicked() {
    if (isPanicked_ || !chord_.isTaken()) {
        return; // the keys repeat as long as they are down
    }
    isPanicked_ = true;
    disarm();
    if (wheel_.isActive()) {
        xcb_ungrab_pointer(connection_.get(), XCB_CURRENT_TIME);
    }
    postTurned();
    xcb_flush(connection_.get());
    host_.panic();
}

/// Takes or releases what there is to hold, as the pointer's place asks for.
void HolderSession::look() {
    isLookDue_ = false;
    nextLook_ = Clock::now() + lookInterval;
    if (!isArmed()) {
        return;
    }
    const auto pointer = probe_.look(hold_.pointers().master);
    if (!pointer) {
        return;
    }
    auto next = ScrollHold::Next::whenItMoves;
    if (isInBand(*pointer)) {
        ensureGuard();
        tellWatchdog(true);
        host_.caughtPresses.setMayCatch(CaughtPress::Kind::wheel);
        next = hold_.holdHere(*pointer, guard_.isRunning(), watch_->lastMover());
    } else {
        next = hold_.leave(*pointer);
        turned_.forgetPosted();
    }
    isLookDue_ = isLookDue_ || next != ScrollHold::Next::whenItMoves;
    if (next == ScrollHold::Next::atOnce) {
        nextLook_ = Clock::now();
    }
}

void HolderSession::ensureGuard() {
    if (!guard_.isRunning()) {
        connection_.sync(); // the window must be there before somebody names it
        guard_.ensure(probe_.window());
    }
}

void HolderSession::tellWatchdog(bool isHolding) {
    WatchdogMessage message = waiting_;
    message.isHolding = isHolding ? 1 : 0;
    message.buttonsDown = poster_.buttonsDown();
    if (!guard_.tell(message)) {
        watchdogLost();
    }
}

void HolderSession::watchdogLost() {
    guard_.lost();
    connection_.sync();
    if (connection_.isBroken()) {
        return; // it has done its work
    }
    hold_.letGo();
    releaseLeftPress();
    isLookDue_ = true;
    guard_.sayLost();
}

void HolderSession::waitForNews() {
    enum Source { orders, server, raw, record, watchdog, count };
    std::array<pollfd, count> sources{};
    sources.fill({-1, POLLIN, 0});
    sources[orders].fd = host_.ordersDescriptor;
    sources[server].fd = connection_.descriptor();
    auto until = Clock::time_point::max();
    if (isLookDue_) {
        // Motion has been noticed already; more of it need not wake anybody until the look.
        until = nextLook_;
    } else if (watch_) {
        const auto [rawEvents, records] = watch_->descriptors();
        sources[raw].fd = rawEvents;
        sources[record].fd = records;
    }
    sources[watchdog].fd = guard_.descriptor();
    until = std::min(until, guard_.nextTell());
    int timeout = -1;
    if (until != Clock::time_point::max()) {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
        timeout = static_cast<int>(std::max<std::int64_t>(wait.count(), 0));
    }
    xcb_flush(connection_.get());
    poll(sources.data(), sources.size(), timeout);
    if (sources[watchdog].revents != 0) {
        watchdogLost();
    }
    if (watch_ && watch_->drain()) {
        isLookDue_ = true;
    }
}

} // namespace quillon
