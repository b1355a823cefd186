#include "Platform/Linux/tray/TrayScreen.h"

#include <QAbstractEventDispatcher>

#include <utility>

namespace quillon {

namespace {
constexpr double reconnectSeconds = 1.0; // a server that throws us out is not pestered
} // namespace

TrayScreen::TrayScreen(const TrayContext& context, TrayScreenListener& listener)
    : context_(context), listener_(listener) {
    connect();
}

TrayScreen::~TrayScreen() {
    if (reconnecting_) {
        reconnecting_->cancel();
    }
    stopReading();
    if (connection_) {
        context_.ownWindows.remove(ids_);
    }
}

void TrayScreen::stopReading() {
    if (!notifier_) {
        return;
    }
    notifier_->setEnabled(false);
    notifier_->disconnect();
    if (auto* dispatcher = QAbstractEventDispatcher::instance()) {
        dispatcher->disconnect(notifier_.get());
    }
    if (isReading_) {
        notifier_.release()->deleteLater(); // it may be what called us
    }
    notifier_.reset();
    kept_.clear();
}

void TrayScreen::connect() {
    connection_ = X11Connection::open();
    if (!connection_) {
        return;
    }
    ids_ = ResourceRange::of(connection_->get());
    context_.ownWindows.add(ids_);
    atoms_ = std::make_unique<TrayAtoms>(*connection_);
    displays_ = std::make_unique<X11Displays>();
    displays_->follow(*connection_);
    displays_->setGeometryHandler([this](const X11Displays::GeometryRef& geometry) {
        const bool isFirst = !std::exchange(geometry_, geometry);
        if (!isFirst) {
            listener_.geometryChanged();
        }
    });
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
    // Round trips can bring events in behind the notifier's back.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     notifier_.get(), [this] { keepQueuedEvents(); });
}

/// What events bring about may take long and run event loops of its own, which is not for the
/// moment before the loop waits.
void TrayScreen::keepQueuedEvents() {
    const bool wasEmpty = kept_.empty();
    while (XcbOwned<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_->get())}) {
        kept_.push_back(std::move(event));
    }
    if (wasEmpty && !kept_.empty()) {
        context_.runLoop.async([this, alive = std::weak_ptr(alive_)] {
            if (!alive.expired()) {
                readEvents();
            }
        });
    }
}

XcbOwned<xcb_generic_event_t> TrayScreen::nextEvent() {
    if (kept_.empty()) {
        return XcbOwned<xcb_generic_event_t>(xcb_poll_for_event(connection_->get()));
    }
    auto event = std::move(kept_.front());
    kept_.pop_front();
    return event;
}

void TrayScreen::readEvents() {
    const std::weak_ptr<bool> alive = alive_;
    const bool isOutermost = !std::exchange(isReading_, true);
    while (connection_) {
        const auto event = nextEvent();
        if (!event) {
            break;
        }
        handle(*event);
        if (alive.expired()) {
            return;
        }
    }
    if (connection_ && connection_->isBroken()) {
        lose();
    }
    if (isOutermost) {
        isReading_ = false;
    }
}

void TrayScreen::handle(const xcb_generic_event_t& event) {
    // Of window geometries, only the root's concerns the screens.
    const bool ofOther =
        (event.response_type & 0x7FU) == XCB_CONFIGURE_NOTIFY &&
        reinterpret_cast<const xcb_configure_notify_event_t&>(event).window != connection_->root();
    if (!ofOther) {
        displays_->handleEvent(event);
    }
    listener_.handleEvent(event);
}

void TrayScreen::lose() {
    stopReading();
    displays_.reset();
    geometry_.reset();
    const auto broken = std::move(connection_);
    context_.ownWindows.remove(ids_);
    listener_.connectionChanged();
    reconnecting_ = context_.runLoop.asyncAfter(reconnectSeconds, [this] {
        connect();
        if (connection_) {
            listener_.connectionChanged();
        }
    });
}

Rect TrayScreen::toPoints(const PixelRect& pixels) const {
    const Point corner = geometry_->toPoints(pixels.x, pixels.y + pixels.height);
    return {corner.x, corner.y, pixels.width / scale(), pixels.height / scale()};
}

std::optional<QPoint> TrayScreen::pointer() const {
    if (!connection_) {
        return std::nullopt;
    }
    const XcbOwned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_->get(), xcb_query_pointer(connection_->get(), connection_->root()), nullptr));
    return reply ? std::optional(QPoint(reply->root_x, reply->root_y)) : std::nullopt;
}

} // namespace quillon
