#include "Tools/Pointer/MediaControlManager.h"

#include "Tools/Edges/AccessibilityCheck.h"
#include "Tools/Edges/EdgeBand.h"
#include "Tools/Pointer/PointText.h"
#include "Tools/SystemKey.h"

#include <array>
#include <cmath>
#include <string>

namespace quillon {

namespace {

constexpr EdgeToolTraits mediaTraits{
    .isEnabled = {"MediaControlEnabled", true},
    .edgeSensitivity = {"MediaControlEdgeSensitivity", 30.0},
    .leftEdge = {"MediaControlLeftEdge", false},
    .rightEdge = {"MediaControlRightEdge", false},
    .topEdge = {"MediaControlTopEdge", false},
    .bottomEdge = {"MediaControlBottomEdge", false},
};
constexpr Setting<bool> middleButtonSetting{"MediaControlMiddleButton", true};
constexpr Setting<bool> leftButtonSetting{"MediaControlLeftButton", false};

constexpr double clickDelay = 0.3; // seconds that a further click may take

/// Some mice and remote desktops tell of a click twice.
constexpr Moment duplicateClickThreshold = std::chrono::milliseconds(50);
constexpr double duplicateClickDistance = 1.0; // points

struct ClickAction {
    std::string_view name;
    SystemKey key;
};
constexpr std::array actions{
    ClickAction{"⏯️ Toggle Play/Pause", SystemKey::play},
    ClickAction{"⏭️ Next Track", SystemKey::next},
    ClickAction{"⏮️ Previous Track", SystemKey::previous},
};

} // namespace

MediaControlManager& MediaControlManager::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance =
        *new std::shared_ptr<MediaControlManager>(create(Platform::current()));
    return *instance;
}

MediaControlManager::MediaControlManager(Platform& platform)
    : EdgeToolManager(platform, platform.userDefaults.standard(), mediaTraits),
      middleButtonEnabled_(boolForKey(defaults(), middleButtonSetting.key,
                                      middleButtonSetting.fallback, platform.diagnostics)),
      leftButtonEnabled_(boolForKey(defaults(), leftButtonSetting.key, leftButtonSetting.fallback,
                                    platform.diagnostics)),
      eventMonitor_(platform.monitors) {}

void MediaControlManager::begin() {
    EdgeToolManager::begin();
    if (isEnabled()) {
        startMonitoring(); // which says that permission is not there yet
    }
}

void MediaControlManager::setButton(bool& button, bool enabled, const char* key,
                                    void (MediaControlManager::*changed)()) {
    if (assign(button, enabled, key)) {
        restartIfNeeded(true); // what is listened to is fixed at the start
        Q_EMIT(this->*changed)();
    }
}

void MediaControlManager::setMiddleButtonEnabled(bool enabled) {
    setButton(middleButtonEnabled_, enabled, middleButtonSetting.key,
              &MediaControlManager::middleButtonEnabledChanged);
}

void MediaControlManager::setLeftButtonEnabled(bool enabled) {
    setButton(leftButtonEnabled_, enabled, leftButtonSetting.key,
              &MediaControlManager::leftButtonEnabledChanged);
}

bool MediaControlManager::mayStart() const {
    if (!hasAccessibilityPermission()) {
        log("⚠️ Media Control: No accessibility permission");
    }
    return hasAccessibilityPermission();
}

bool MediaControlManager::installSource() {
    log("🎵 Media Control: Starting monitoring...");
    const std::uint64_t mask = (middleButtonEnabled_ ? eventMask(EventType::otherMouseDown) : 0) |
                               (leftButtonEnabled_ ? eventMask(EventType::leftMouseDown) : 0);
    if (mask == 0) {
        log("⚠️ Media Control: No buttons enabled");
        return false;
    }
    const bool installed =
        eventMonitor_.install(mask, handlerFor(this, &MediaControlManager::handleButton), toolId);
    bandChanged();
    log(installed ? "✅ Media Control: Event monitor successfully created"
                  : "❌ Media Control: Failed to create event monitor");
    return installed;
}

void MediaControlManager::removeSource() {
    if (eventMonitor_.exists()) {
        eventMonitor_.remove();
        log("🎵 Media Control: Stopped monitoring");
    }
}

/// Whatever permission says: a start will tell.
void MediaControlManager::healthTick() {
    if (!isEnabled()) {
        return;
    }
    if (eventMonitor_.exists()) {
        log("✅ Media Control: Monitor is active");
    } else {
        log("⚠️ Media Control: Event monitor is nil, restarting...");
        startMonitoring();
    }
}

void MediaControlManager::handleButton(const MonitoredEvent& event) {
    lastEventTime_ = momentNow(platform().runLoop);
    const bool counts = (event.buttonNumber == MouseButton::left && leftButtonEnabled_) ||
                        (event.buttonNumber == MouseButton::middle && middleButtonEnabled_);
    if (counts) {
        click(platform().displays.mouseLocation());
    }
}

void MediaControlManager::click(Point place) {
    log("🖱️ Media Control: Middle click detected at " + pointText(place));
    if (isDuplicate(place) || !isAtArmedEdge(place)) {
        return;
    }
    ++clickCount_;
    log("📊 Click count: " + std::to_string(clickCount_));
    cancelTimer(clickTimer_);
    clickTimer_ = platform().runLoop.asyncAfter(clickDelay, [this, weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            endBurst();
        }
    });
}

/// Else it is what the next click is compared with.
bool MediaControlManager::isDuplicate(Point place) {
    const Moment now = momentNow(platform().runLoop);
    if (lastClickTime_ && now - *lastClickTime_ < duplicateClickThreshold &&
        std::fabs(place.x - lastClickPoint_.x) < duplicateClickDistance &&
        std::fabs(place.y - lastClickPoint_.y) < duplicateClickDistance) {
        return true;
    }
    lastClickTime_ = now;
    lastClickPoint_ = place;
    return false;
}

bool MediaControlManager::isAtArmedEdge(Point place) const {
    const auto screens = platform().displays.screens();
    const Rect* screen = screenContaining(place, screens);
    if (screen == nullptr) {
        log("⚠️ Media Control: No screen for pointer");
        return false;
    }
    const EdgesAt edges = edgesAt(band(), place, *screen);
    const auto text = [](bool holds) { return std::string(holds ? "true" : "false"); };
    log("🎯 Edge check - Left: " + text(edges.left) + ", Right: " + text(edges.right) +
        ", Top: " + text(edges.top) + ", Bottom: " + text(edges.bottom));
    if (!edges.any()) {
        log("⚠️ Media Control: Click not near any enabled edge");
    }
    return edges.any();
}

void MediaControlManager::endBurst() {
    act(clickCount_);
    clickCount_ = 0;
}

void MediaControlManager::act(int clicks) {
    log("🎵 Media Control: " + std::to_string(clicks) + " click(s) detected");
    if (clicks < 1 || clicks > static_cast<int>(actions.size())) {
        log("🎵 Media Control: Ignoring " + std::to_string(clicks) + " clicks");
        return;
    }
    const ClickAction& action = actions.at(static_cast<std::size_t>(clicks) - 1);
    log(action.name);
    postSystemKey(platform().events, action.key);
}

} // namespace quillon
