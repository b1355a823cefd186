#include "Platform/Linux/windows/QuickPopover.h"

#include "Platform/Linux/windows/Placement.h"
#include "Platform/Linux/windows/ToolkitScreens.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <chrono>
#include <utility>

namespace quillon {

namespace {

constexpr double gap = 6;
constexpr std::chrono::milliseconds retryInterval{2};
constexpr std::chrono::milliseconds longestWait{250};

/// After a change of the screens, until panels have moved to where they belong then.
constexpr std::chrono::milliseconds settlingTime{300};

/// The part of the main screen that no panel has reserved for itself.
Rect freeArea(const ScreenGeometry& geometry) {
    const Rect main = geometry.frames().front();
    const PixelPoint corner = geometry.toPixels({main.minX(), main.maxY()});
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->geometry().topLeft() == QPoint(corner.x, corner.y)) {
            const QRect area = screen->availableGeometry();
            const QPoint whole = screen->geometry().topLeft();
            const double scale = screen->devicePixelRatio() / geometry.pixelsPerPoint();
            const double left = main.minX() + (area.x() - whole.x()) * scale;
            const double top = main.maxY() - (area.y() - whole.y()) * scale;
            const double height = area.height() * scale;
            return {left, top - height, area.width() * scale, height};
        }
    }
    return main;
}

} // namespace

QuickPopover::QuickPopover(const PopoverSurroundings& surroundings, std::string_view screen,
                           std::function<void()> escaped)
    : surroundings_(surroundings), screen_(screen), escaped_(std::move(escaped)),
      manager_(surroundings.inputTime) {
    // An interval of 0 comes due when there is nothing else to do, and between two steps the
    // program is there for its input.
    idle_.setInterval(0);
    QObject::connect(&idle_, &QTimer::timeout, &idle_, [this] {
        if (!prepareStep()) {
            idle_.stop();
        }
    });
    idle_.start();
    followScreens();
    retry_.setInterval(retryInterval);
    QObject::connect(&retry_, &QTimer::timeout, &retry_, [this] { present(); });
}

void QuickPopover::followScreens() {
    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    QObject::connect(&settling_, &QTimer::timeout, &settling_, [this] {
        if (!shown_) {
            return;
        }
        const auto geometry = surroundings_.displays.geometry();
        if (geometry && anchor_ &&
            screenContaining({anchor_->minX(), anchor_->maxY()}, geometry->frames()) == nullptr) {
            anchor_.reset(); // where it was there is no screen any more
        }
        place();
    });
    const auto changed = [this] { settling_.start(); };
    const auto follow = [this, changed](const QScreen* screen) {
        QObject::connect(screen, &QScreen::availableGeometryChanged, &settling_, changed);
    };
    for (const QScreen* screen : QGuiApplication::screens()) {
        follow(screen);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &settling_, follow);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &settling_, changed);
}

bool QuickPopover::prepareStep() {
    if (!window_) {
        window_ = std::make_unique<PopoverWindow>(surroundings_.screens(screen_));
        const auto escape = [this] {
            if (escaped_) {
                escaped_();
            }
        };
        QObject::connect(window_.get(), &PopoverWindow::escaped, window_.get(), escape);
        // The window manager's request is the user's, too.
        QObject::connect(window_.get(), &PopoverWindow::closeRequested, window_.get(),
                         [this, escape] {
                             if (!hasAttachedSheet()) {
                                 escape();
                             }
                         });
        QObject::connect(window_.get(), &PopoverWindow::sizeChanged, window_.get(), [this] {
            if (shown_ && !isFitting_) {
                place();
            }
        });
        return true;
    }
    if (!warm_) {
        warm_ = true;
        window_->warmUp();
        return true;
    }
    return false;
}

PopoverWindow& QuickPopover::preparedWindow() {
    idle_.stop();
    if (!window_) {
        prepareStep();
    }
    return *window_;
}

void QuickPopover::setBehavior(PopoverBehavior /*behavior*/) {}

void QuickPopover::show(const View& anchor, RectEdge preferredEdge) {
    PopoverWindow& window = preparedWindow();
    anchor_ = anchor.onScreen();
    preferredEdge_ = preferredEdge;
    place();
    if (std::exchange(shown_, true)) {
        window.raise();
        makeKeyWindow();
        return;
    }
    waiting_.start();
    present();
}

void QuickPopover::present() {
    if (!manager_.isWithdrawn(*window_) && !waiting_.hasExpired(longestWait.count())) {
        retry_.start();
        return;
    }
    retry_.stop();
    window_->create();
    window_->shapeFor(manager_.isComposited());
    manager_.markAccessory(*window_);
    manager_.show(*window_);
    manager_.confirmAccessory(*window_);
}

void QuickPopover::place() {
    const auto geometry = surroundings_.displays.geometry();
    if (!geometry) {
        return;
    }
    const Rect frame =
        anchor_ ? screenOf(*anchor_, geometry->frames()) : geometry->frames().front();
    const auto measure = ToolkitMeasure::of(frame, *geometry);
    if (!measure) {
        return;
    }
    const PanelPlace* panel = surroundings_.panel;
    const auto panelRect = panel == nullptr ? std::nullopt : panel->panelOnScreen();
    const bool isVertical = panel != nullptr && panel->isVertical();
    const Size room = roomBeside(panelRect, isVertical, frame, gap);
    isFitting_ = true;
    window_->fitInto(measure->toUnits(room));
    isFitting_ = false;
    const Size size = measure->toPoints(window_->size());
    const Rect place =
        anchor_ ? placePopover({*anchor_, frame, panelRect, isVertical}, preferredEdge_, size, gap)
                : placePopoverWithoutAnchor(freeArea(*geometry), panelRect, isVertical, size, gap);
    window_->setPosition(measure->cornerOf(place));
}

void QuickPopover::close() {
    if (std::exchange(shown_, false)) {
        retry_.stop();
        window_->hide();
    }
}

void QuickPopover::makeKeyWindow() {
    if (window_ && window_->isVisible()) {
        manager_.activate(*window_);
    }
}

bool QuickPopover::hasAttachedSheet() const { return window_ && window_->hasAttachedSheet(); }

QuickPopovers::QuickPopovers(PopoverSurroundings surroundings)
    : surroundings_(std::move(surroundings)) {
    // Graphics drivers cost more memory and time than a small window is worth.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

std::unique_ptr<Popover> QuickPopovers::make(std::string_view screen,
                                             std::function<void()> escaped) {
    return std::make_unique<QuickPopover>(surroundings_, screen, std::move(escaped));
}

} // namespace quillon
