#include "Platform/Linux/tray/XEmbedTray.h"

#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/Pixels.h"
#include "Platform/StatusBar.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr double paintedSeconds = 0.3; // by then a panel has painted itself
constexpr double dockAgainSeconds = 1.0;
constexpr int sampleReach = 4; // lengths of the item, to both of its sides

void cancel(TimerRef& timer) {
    if (const TimerRef going = std::exchange(timer, nullptr)) {
        going->cancel();
    }
}

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

XEmbedTray::XEmbedTray(RunLoop& runLoop, TrayScreen& screen, TrayContent& content, double length,
                       std::function<void()> trayChanged)
    : runLoop_(runLoop), screen_(screen), content_(content), length_(length),
      trayChanged_(std::move(trayChanged)),
      toolTip_(
          runLoop, [this] { return content_.toolTip(); }, [this] { return screen_.pointer(); }) {
    findTray();
}

XEmbedTray::~XEmbedTray() { undock(); }

void XEmbedTray::setVisible(bool visible) {
    if (std::exchange(isVisible_, visible) != visible) {
        visible ? dock() : undock();
    }
}

void XEmbedTray::setLength(double length) {
    if (std::exchange(length_, length) == length || !window_) {
        return;
    }
    const auto place = placeOf(screen_.connection(), window_->id());
    const QSize wanted = wantedSize();
    if (place && wanted.width() != place->width) {
        window_->requestSize({wanted.width(), place->height});
    }
}

void XEmbedTray::connectionChanged() {
    undock();
    manager_.reset();
    findTray();
    trayChanged_();
}

void XEmbedTray::geometryChanged() {
    if (window_) {
        window_->requestSize(wantedSize());
        draw();
    }
}

void XEmbedTray::findTray() {
    undock();
    manager_ = screen_.isConnected() ? findTrayManager(screen_.connection(), screen_.atoms())
                                     : std::nullopt;
    dock();
}

void XEmbedTray::dock() {
    if (!manager_ || !isVisible_) {
        return;
    }
    window_ = std::make_unique<DockWindow>(screen_.connection(), screen_.atoms(), *manager_,
                                           wantedSize());
    draw();
    window_->requestDock();
}

void XEmbedTray::undock() {
    cancel(sampling_);
    cancel(docking_);
    toolTip_.dismiss();
    ground_ = {};
    window_.reset();
}

void XEmbedTray::dockLater() {
    undock();
    docking_ = runLoop_.asyncAfter(dockAgainSeconds, [this] { dock(); });
}

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
            draw();
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
            samplePanelNowAndSoon();
        }
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
        if (isOurs(reinterpret_cast<const xcb_configure_notify_event_t&>(event).window)) {
            samplePanelNowAndSoon();
        }
        break;
    case XCB_MAP_NOTIFY:
        if (isOurs(reinterpret_cast<const xcb_map_notify_event_t&>(event).window)) {
            samplePanelNowAndSoon();
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
    const double scale = screen_.scale();
    content_.clicked({*type, event.time, event.root_x, event.root_y},
                     Point{event.event_x / scale, event.event_y / scale});
}

void XEmbedTray::contentChanged() {
    toolTip_.textChanged();
    draw();
}

void XEmbedTray::draw() {
    const auto place = window_ ? placeOf(screen_.connection(), window_->id()) : std::nullopt;
    if (!place) {
        return;
    }
    const QSize size(place->width, place->height);
    QImage picture = content_.picture(size, screen_.scale(), label());
    if (!manager_->hasAlpha()) {
        QImage opaque(size, QImage::Format_RGB32);
        opaque.fill(Qt::black);
        QPainter painter(&opaque);
        painter.drawImage(0, 0, ground_);
        painter.drawImage(0, 0, picture);
        painter.end();
        picture = std::move(opaque);
    }
    window_->setPicture(picture);
}

void XEmbedTray::samplePanelNowAndSoon() {
    samplePanel();
    cancel(sampling_);
    sampling_ = runLoop_.asyncAfter(paintedSeconds, [this] {
        sampling_.reset();
        samplePanel();
    });
}

void XEmbedTray::samplePanel() {
    const auto item = dockedPlace();
    const auto panel = item ? panelPlace() : std::nullopt;
    const auto root =
        panel ? placeOf(screen_.connection(), screen_.connection().root()) : std::nullopt;
    const auto shown = root ? intersection(*panel, *root) : std::nullopt;
    if (shown) {
        const int reach = sampleReach * std::max(item->width, item->height);
        const bool vertical = panel->height > panel->width;
        const auto strip = intersection(
            *shown,
            vertical ? PixelRect{item->x, item->y - reach, item->width, item->height + 2 * reach}
                     : PixelRect{item->x - reach, item->y, item->width + 2 * reach, item->height});
        const QImage pixels = strip ? screenPixels(screen_.connection(), *strip) : QImage();
        if (!pixels.isNull()) {
            const QRect without(item->x - strip->x, item->y - strip->y, item->width, item->height);
            panelLuminance_ = medianLuminance(pixels, without).value_or(panelLuminance_);
            ground_ = groundOf(pixels, without, vertical, vertical ? item->height : item->width);
        }
    }
    draw();
}

QSize XEmbedTray::wantedSize() const {
    const double scale = screen_.scale();
    const double length = length_ == squareStatusItemLength ? usualThickness : length_;
    return {std::max(1, static_cast<int>(std::lround(length * scale))),
            static_cast<int>(std::lround(usualThickness * scale))};
}

std::optional<PixelRect> XEmbedTray::dockedPlace() const {
    if (!window_) {
        return std::nullopt;
    }
    xcb_connection_t* const x = screen_.connection().get();
    const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window_->id()), nullptr));
    const bool isSeen = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    return isSeen ? placeOf(screen_.connection(), window_->id()) : std::nullopt;
}

std::optional<PixelRect> XEmbedTray::panelPlace() const {
    const auto topLevel = window_ ? topLevelOf(screen_.connection(), window_->id()) : std::nullopt;
    return topLevel && *topLevel != window_->id() ? placeOf(screen_.connection(), *topLevel)
                                                  : std::nullopt;
}

std::optional<Rect> XEmbedTray::onScreen() const {
    const auto place = dockedPlace();
    return place ? std::optional(screen_.toPoints(*place)) : std::nullopt;
}

std::optional<Size> XEmbedTray::size() const {
    const auto place = onScreen();
    return place ? std::optional(Size{place->width, place->height}) : std::nullopt;
}

std::optional<Rect> XEmbedTray::panelOnScreen() const {
    const auto place = panelPlace();
    return place ? std::optional(screen_.toPoints(*place)) : std::nullopt;
}

bool XEmbedTray::isVertical() const {
    // The shape first: not every tray in an upright panel says that it is one.
    const auto panel = panelPlace();
    return panel ? panel->height > panel->width : manager_ && manager_->isVertical;
}

QColor XEmbedTray::label() const {
    return labelColor(manager_ && manager_->labelLuminance ? 1 - *manager_->labelLuminance
                                                           : panelLuminance_);
}

} // namespace quillon
