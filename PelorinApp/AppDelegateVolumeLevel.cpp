// The volume level that takes the icon's place while the volume changes, and leaves by itself.
//
// Each show, update and dismissal counts the fade generation up, so that a fade-out which was
// overtaken meanwhile does not take away what is shown again.

#include "AppDelegate.h"

#include "PercentText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr float fullPercent = 100;

double levelOf(float percent) { return static_cast<double>(percent) / fullPercent; }

std::string levelToolTip(float percent) {
    if (!std::isfinite(percent)) {
        return "Volume —";
    }
    return "Volume " + percentText(std::clamp(percent, 0.0F, fullPercent));
}

} // namespace

void AppDelegate::showVolumeLevel(float percent) {
    if (!Platform::isThere()) {
        return;
    }
    Platform::current().runLoop.async([percent] {
        if (const auto self = shared_.lock()) {
            self->acceptVolumePercent(percent);
        }
    });
}

void AppDelegate::acceptVolumePercent(float percent) {
    // The addition takes a minus from a zero.
    const float tenths = std::round(std::clamp(percent, 0.0F, fullPercent) * 10) / 10 + 0.0F;
    volumeHUDQueuedPercent_ = tenths;
    const double now = platform_.runLoop.uptime();
    if (!volumeLevelIsShown()) {
        clearVolumeQueue();
        volumeHUDLastFlushUptime_ = now;
        presentVolumePercent(tenths);
        return;
    }
    if (volumeHUDDebounceWorkItem_) {
        std::exchange(volumeHUDDebounceWorkItem_, nullptr)->cancel();
    }
    const double elapsed = now - volumeHUDLastFlushUptime_;
    if (elapsed < volumeHUDMinUpdateInterval) {
        volumeHUDDebounceWorkItem_ = platform_.runLoop.asyncAfter(
            volumeHUDMinUpdateInterval - elapsed, [weak = weak_from_this()] {
                if (const auto self = weak.lock()) {
                    self->flushQueuedVolumePercent();
                }
            });
        return;
    }
    volumeHUDLastFlushUptime_ = now;
    volumeHUDQueuedPercent_.reset();
    presentVolumePercent(tenths);
}

void AppDelegate::flushQueuedVolumePercent() {
    volumeHUDDebounceWorkItem_ = nullptr;
    if (const auto percent = std::exchange(volumeHUDQueuedPercent_, std::nullopt)) {
        volumeHUDLastFlushUptime_ = platform_.runLoop.uptime();
        presentVolumePercent(*percent);
    }
}

void AppDelegate::clearVolumeQueue() {
    if (volumeHUDDebounceWorkItem_) {
        std::exchange(volumeHUDDebounceWorkItem_, nullptr)->cancel();
    }
    volumeHUDQueuedPercent_.reset();
}

bool AppDelegate::volumeLevelIsShown() const {
    const auto container = volumeHUDContainer_.lock();
    return container && !volumeHUDBarButton_.expired() && statusBarItem_ &&
           statusBarItem_->customView() == container;
}

void AppDelegate::presentVolumePercent(float percent) {
    if (!statusBarItem_) {
        return;
    }
    const auto customView = statusBarItem_->customView();
    if (customView && customView != volumeHUDContainer_.lock()) {
        restoreStatusButton();
    }
    if (volumeLevelIsShown()) {
        updateVolumeLevel(percent);
    } else if (statusBarItem_->button()) {
        buildVolumeLevel(percent);
    }
}

void AppDelegate::updateVolumeLevel(float percent) {
    const auto container = volumeHUDContainer_.lock();
    const auto bar = volumeHUDBarButton_.lock();
    ++volumeHUDDismissFadeGeneration_;
    platform_.animator.setAlphaWithoutAnimation(*container, 1);
    bar->setLevel(levelOf(percent));
    bar->setToolTip(levelToolTip(percent));
    const double width = statusItemDisplayWidth();
    const Rect frame{0, 0, width, platform_.statusBar.thickness()};
    container->setFrame(frame);
    bar->setFrame(frame);
    statusBarItem_->setLength(width);
    holdVolumeLevel(0);
}

void AppDelegate::buildVolumeLevel(float percent) {
    if (volumeMenuBarRestoreWorkItem_) {
        volumeMenuBarRestoreWorkItem_->cancel();
    }
    ++volumeHUDDismissFadeGeneration_;
    const auto bar = std::make_shared<VolumeBarMenuBarButton>();
    bar->setLevel(levelOf(percent));
    bar->setToolTip(levelToolTip(percent));
    bar->setAction(action("statusBarButtonPressed:", &AppDelegate::statusBarButtonPressed));
    bar->setSendsActionOn(eventMask(EventType::leftMouseUp) | eventMask(EventType::rightMouseUp));

    const double width = statusItemDisplayWidth();
    const Rect frame{0, 0, width, platform_.statusBar.thickness()};
    const auto container = std::make_shared<View>();
    container->setFrame(frame);
    bar->setFrame(frame);
    container->addSubview(bar);
    container->setAlphaValue(0);

    volumeHUDContainer_ = container;
    volumeHUDBarButton_ = bar;
    statusBarItem_->setLength(width);
    statusBarItem_->setCustomView(container);
    platform_.animator.animateAlpha(container, 1, volumeHUDFadeDuration, TimingCurve::easeInEaseOut,
                                    nullptr);
    holdVolumeLevel(volumeHUDFadeDuration);
}

double AppDelegate::statusItemDisplayWidth() {
    if (const auto view = statusItemView()) {
        measureDisplayWidth(*view);
    }
    return statusBarDisplayWidth_;
}

void AppDelegate::holdVolumeLevel(double extraDelay) {
    if (volumeMenuBarRestoreWorkItem_) {
        volumeMenuBarRestoreWorkItem_->cancel();
    }
    volumeMenuBarRestoreWorkItem_ =
        platform_.runLoop.asyncAfter(extraDelay + volumeHUDHoldDuration, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->fadeVolumeLevelOut();
            }
        });
}

void AppDelegate::fadeVolumeLevelOut() {
    clearVolumeQueue();
    const auto container = volumeHUDContainer_.lock();
    if (!container || !statusBarItem_ || statusBarItem_->customView() != container) {
        restoreStatusButton();
        return;
    }
    const std::int64_t generation = ++volumeHUDDismissFadeGeneration_;
    platform_.animator.animateAlpha(
        container, 0, volumeHUDFadeDuration, TimingCurve::easeInEaseOut,
        [weak = weak_from_this(), faded = std::weak_ptr<View>(container), generation] {
            const auto self = weak.lock();
            const auto view = faded.lock();
            if (self && view && self->volumeHUDDismissFadeGeneration_ == generation &&
                self->statusBarItem_->customView() == view &&
                self->volumeHUDContainer_.lock() == view) {
                self->restoreStatusButton();
            }
        });
}

void AppDelegate::dismissVolumeLevelAtOnce() {
    if (volumeMenuBarRestoreWorkItem_) {
        std::exchange(volumeMenuBarRestoreWorkItem_, nullptr)->cancel();
    }
    clearVolumeQueue();
    ++volumeHUDDismissFadeGeneration_;
    if (statusBarItem_ && statusBarItem_->customView() == volumeHUDContainer_.lock()) {
        restoreStatusButton();
    }
}

void AppDelegate::restoreStatusButton() {
    if (!statusBarItem_) {
        return;
    }
    clearVolumeQueue();
    volumeHUDLastFlushUptime_ = 0;
    volumeMenuBarRestoreWorkItem_ = nullptr; // not cancelled: it may be what runs just now
    volumeHUDContainer_.reset();
    volumeHUDBarButton_.reset();
    statusBarItem_->setCustomView(nullptr);
    statusBarItem_->setLength(statusBarDisplayWidth_);
    if (const auto button = statusBarItem_->button()) {
        applyIcon(*button);
        setUpButton(*button);
        button->setAlphaValue(1);
    }
}

} // namespace quillon
