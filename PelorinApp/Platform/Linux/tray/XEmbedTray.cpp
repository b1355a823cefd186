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
constexpr double freshSeconds = 1.0; // a look at the panel that is no older need not be taken again

/// The panel says how large items are: whatever it makes of ours is as thick as a status bar.
double pixelsPerPointIn(const PixelRect& item) {
    return std::min(item.width, item.height) / usualThickness;
}

void cancel(TimerRef& timer) {
    if (const TimerRef going = std::exchange(timer, nullptr)) {
        going->cancel();
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
    if (!place) {
        return;
    }
    const QSize wanted = wantedSize(pixelsPerPointIn(*place));
    window_->setLeastSize(length == squareStatusItemLength ? wantedSize(screen_.scale()) : wanted);
    const int thickness = isVertical() ? place->width : place->height;
    const QSize size = length == squareStatusItemLength ? QSize(thickness, thickness)
                                                        : QSize(wanted.width(), place->height);
    if (size != QSize(place->width, place->height)) {
        window_->requestSize(size);
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
        window_->setLeastSize(wantedSize(screen_.scale()));
        window_->requestSize(wantedSize(screen_.scale()));
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
                                           wantedSize(screen_.scale()));
    draw();
    window_->requestDock();
}

void XEmbedTray::undock() {
    cancel(sampling_);
    cancel(docking_);
    toolTip_.dismiss();
    panel_.ground = {};
    seenAt_.reset();
    window_.reset();
}

void XEmbedTray::dockLater() {
    undock();
    docking_ = runLoop_.asyncAfter(dockAgainSeconds, [this] {
        docking_.reset();
        // The tray may have given up, or another one have come, in the same windows.
        findTray();
        trayChanged_();
    });
}

void XEmbedTray::contentChanged() {
    toolTip_.textChanged();
    if (seenAt_ && runLoop_.uptime() - *seenAt_ > freshSeconds) {
        lookAtPanel(); // its theme may be another one by now
    } else {
        draw();
    }
}

void XEmbedTray::draw() {
    const auto place = window_ ? placeOf(screen_.connection(), window_->id()) : std::nullopt;
    if (!place) {
        return;
    }
    const QSize size(place->width, place->height);
    QImage picture = content_.picture(size, pixelsPerPointIn(*place), label());
    if (!manager_->hasAlpha()) {
        QImage opaque(size, QImage::Format_RGB32);
        opaque.fill(Qt::black);
        QPainter painter(&opaque);
        painter.drawImage(0, 0, panel_.ground);
        painter.drawImage(0, 0, picture);
        painter.end();
        picture = std::move(opaque);
    }
    window_->setPicture(picture);
}

void XEmbedTray::lookAtPanelNowAndSoon() {
    lookAtPanel();
    cancel(sampling_);
    sampling_ = runLoop_.asyncAfter(paintedSeconds, [this] {
        sampling_.reset();
        lookAtPanel();
    });
}

void XEmbedTray::lookAtPanel() {
    const auto item = dockedPlace();
    const auto panel = item ? panelPlace() : std::nullopt;
    if (const auto sample =
            panel ? samplePanel(screen_.connection(), *panel, *item) : std::nullopt) {
        panel_ = *sample;
        seenAt_ = runLoop_.uptime();
    }
    draw();
}

QSize XEmbedTray::wantedSize(double pixelsPerPoint) const {
    const double length = length_ == squareStatusItemLength ? usualThickness : length_;
    return {std::max(1, static_cast<int>(std::lround(length * pixelsPerPoint))),
            static_cast<int>(std::lround(usualThickness * pixelsPerPoint))};
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
    const auto place = dockedPlace();
    if (!place) {
        return std::nullopt;
    }
    const double unit = pixelsPerPointIn(*place);
    return Size{place->width / unit, place->height / unit};
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
    // What is seen counts for more than what is said: panels keep their word of a former theme.
    const bool isToldOnly = !seenAt_ && manager_ && manager_->labelLuminance;
    return labelColor(isToldOnly ? 1 - *manager_->labelLuminance : panel_.luminance);
}

} // namespace quillon
