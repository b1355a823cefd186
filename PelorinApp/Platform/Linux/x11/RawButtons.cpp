#include "Platform/Linux/x11/RawButtons.h"

#include <QAbstractEventDispatcher>

#include <utility>

#include <poll.h>

namespace quillon {

std::shared_ptr<RawButtons> RawButtons::open(Listener listener) {
    auto connection = X11Connection::open();
    if (!connection) {
        return nullptr;
    }
    std::shared_ptr<RawButtons> made(new RawButtons(std::move(connection), std::move(listener)));
    if (!made->mayListen()) {
        return nullptr;
    }
    made->numbers_.follow();
    made->listen();
    return made;
}

RawButtons::RawButtons(std::unique_ptr<X11Connection> connection, Listener listener)
    : connection_(std::move(connection)), listener_(std::move(listener)), numbers_(*connection_),
      target_(*connection_) {}

RawButtons::~RawButtons() { close(); }

bool RawButtons::mayListen() const {
    if (!connection_->hasExtension(&xcb_input_id)) {
        return false;
    }
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_->get(), xcb_input_xi_query_version(connection_->get(), 2, 3), nullptr));
    return version && (version->major_version > 2 ||
                       (version->major_version == 2 && version->minor_version >= 1));
}

void RawButtons::listen() {
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(xcb_poll_for_event); });
    // Round trips can bring events in behind the notifier's back.
    aboutToBlock_ = QObject::connect(QAbstractEventDispatcher::instance(),
                                     &QAbstractEventDispatcher::aboutToBlock, notifier_.get(),
                                     [this] { readEvents(xcb_poll_for_queued_event); });
}

void RawButtons::close() {
    isClosed_ = true;
    QObject::disconnect(aboutToBlock_);
    if (notifier_) {
        notifier_->setEnabled(false);
    }
    if (isReading_ && notifier_) {
        notifier_.release()->deleteLater(); // it may be what called us
    }
    notifier_.reset();
}

bool RawButtons::isLost() const {
    pollfd descriptor{connection_->descriptor(), 0, 0};
    return connection_->isBroken() || (poll(&descriptor, 1, 0) == 1 && descriptor.revents != 0);
}

void RawButtons::select(bool presses, bool releases) {
    if (presses == arePressesSelected_ && releases == areReleasesSelected_) {
        return;
    }
    arePressesSelected_ = presses;
    areReleasesSelected_ = releases;
    // Of the masters: what a device does comes from it and again from its master.
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = 0;
    } selection;
    if (presses) {
        selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    }
    if (releases) {
        selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    }
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &selection.head);
    connection_->sync();
}

void RawButtons::readEvents(xcb_generic_event_t* (*next)(xcb_connection_t*)) {
    const auto self = shared_from_this(); // the listener may let go of it
    const bool wasReading = std::exchange(isReading_, true);
    while (!isClosed_) {
        const XcbOwned<xcb_generic_event_t> event(next(connection_->get()));
        if (!event) {
            break;
        }
        handleEvent(*event);
    }
    if (!isClosed_ && connection_->isBroken()) {
        close();
        listener_.lost();
    }
    isReading_ = wasReading;
}

void RawButtons::handleEvent(const xcb_generic_event_t& event) {
    numbers_.handle(event);
    if (event.response_type != XCB_GE_GENERIC) {
        return;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (raw.event_type != XCB_INPUT_RAW_BUTTON_PRESS &&
        raw.event_type != XCB_INPUT_RAW_BUTTON_RELEASE) {
        return;
    }
    listener_.button({
        .physical = raw.detail,
        .number = numbers_.numberOf(raw.detail, raw.sourceid, raw.deviceid),
        .isDown = raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS,
        .isOfAxis = (raw.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED) != 0,
        .source = raw.sourceid,
        .master = raw.deviceid,
        .time = raw.time,
    });
}

} // namespace quillon
