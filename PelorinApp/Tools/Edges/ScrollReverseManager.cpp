#include "Tools/Edges/ScrollReverseManager.h"

#include "Tools/Edges/AccessibilityCheck.h"
#include "Tools/MakeManager.h"
#include "Tools/Setting.h"

#include <array>
#include <utility>

namespace quillon {

namespace {

constexpr Setting<bool> reverseTrackpadSetting{"ScrollReverseTrackpad", false};
constexpr Setting<bool> reverseMouseSetting{"ScrollReverseMouse", false};

bool load(Platform& platform, const Setting<bool>& setting) {
    return boolForKey(platform.userDefaults.standard(), setting.key, setting.fallback,
                      platform.diagnostics);
}

/// A plain wheel has lines and nothing else. Some mice send fractions as trackpads do, and count as
/// one.
bool isOfMouse(const Event& event) {
    using enum EventField;
    return event.integerValueField(scrollIsContinuous) == 0 &&
           event.doubleValueField(scrollFixedPointDeltaAxis1) == 0 &&
           event.doubleValueField(scrollFixedPointDeltaAxis2) == 0 &&
           event.doubleValueField(scrollPointDeltaAxis1) == 0 &&
           event.doubleValueField(scrollPointDeltaAxis2) == 0;
}

} // namespace

ScrollReverseManager& ScrollReverseManager::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance =
        *new std::shared_ptr<ScrollReverseManager>(create(Platform::current()));
    return *instance;
}

std::shared_ptr<ScrollReverseManager> ScrollReverseManager::create(Platform& platform) {
    return makeManager<ScrollReverseManager>(platform);
}

ScrollReverseManager::ScrollReverseManager(Platform& platform)
    : platform_(platform), defaults_(platform.userDefaults.standard()),
      reverseTrackpad_(load(platform, reverseTrackpadSetting)),
      reverseMouse_(load(platform, reverseMouseSetting)),
      scrollTap_(platform, EventType::scrollWheel) {}

ScrollReverseManager::~ScrollReverseManager() {
    stopMonitoring();
    cancelTimer(permissionCheckTimer_);
}

void ScrollReverseManager::begin() {
    checkAccessibilityPermission();
    // For good: a withdrawal is to be noticed as well.
    permissionCheckTimer_ = scheduleWeakly(platform_, permissionCheckInterval, weak_from_this(),
                                           &ScrollReverseManager::checkAccessibilityPermission);
}

void ScrollReverseManager::checkAccessibilityPermission() {
    quillon::checkAccessibilityPermission(platform_, weak_from_this(),
                                          &ScrollReverseManager::applyPermissionResult);
}

void ScrollReverseManager::setPermission(bool granted) {
    if (std::exchange(hasAccessibilityPermission_, granted) != granted) {
        Q_EMIT hasAccessibilityPermissionChanged();
    }
}

void ScrollReverseManager::applyPermissionResult(bool granted) {
    const bool previous = hasAccessibilityPermission_;
    setPermission(granted);
    if (granted && !previous) {
        startMonitoring();
    } else if (!granted && previous) {
        stopMonitoring();
    }
}

void ScrollReverseManager::setIsEnabled(bool enabled) {
    if (std::exchange(isEnabled_, enabled) != enabled) {
        Q_EMIT isEnabledChanged();
    }
    if (enabled) {
        startMonitoring();
    } else {
        stopMonitoring();
    }
}

void ScrollReverseManager::setFlag(bool& flag, bool value, const char* key,
                                   void (ScrollReverseManager::*changed)()) {
    const bool differs = std::exchange(flag, value) != value;
    defaults_.set(key, value);
    if (differs) {
        scrollTap_.setConstantRewrite({reverseMouse_, reverseTrackpad_});
        Q_EMIT(this->*changed)();
    }
}

void ScrollReverseManager::setReverseTrackpad(bool reverse) {
    setFlag(reverseTrackpad_, reverse, reverseTrackpadSetting.key,
            &ScrollReverseManager::reverseTrackpadChanged);
}

void ScrollReverseManager::setReverseMouse(bool reverse) {
    setFlag(reverseMouse_, reverse, reverseMouseSetting.key,
            &ScrollReverseManager::reverseMouseChanged);
}

void ScrollReverseManager::startMonitoring() {
    checkAccessibilityPermission();
    if (isEnabled_ && hasAccessibilityPermission_ && !scrollTap_.exists()) {
        installTap();
    }
}

void ScrollReverseManager::stopMonitoring() { scrollTap_.remove(); }

void ScrollReverseManager::installTap() {
    if (scrollTap_.install(&ScrollReverseManager::tapCallback, this, toolId)) {
        scrollTap_.setConstantRewrite({reverseMouse_, reverseTrackpad_});
    } else {
        setPermission(platform_.accessibility.isProcessTrusted());
    }
}

Event* ScrollReverseManager::tapCallback(EventType type, Event* event, void* userInfo) {
    auto* manager = static_cast<ScrollReverseManager*>(userInfo);
    if (manager == nullptr) {
        return event;
    }
    if (type == EventType::tapDisabledByTimeout || type == EventType::tapDisabledByUserInput) {
        manager->scrollTap_.reenable();
    } else if (type == EventType::scrollWheel) {
        manager->reverse(*event);
    }
    return event;
}

void ScrollReverseManager::reverse(Event& event) const {
    using enum EventField;
    static constexpr std::array deltas{
        scrollLineDeltaAxis1,       scrollLineDeltaAxis2,  scrollFixedPointDeltaAxis1,
        scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1, scrollPointDeltaAxis2,
    };
    if (!(isOfMouse(event) ? reverseMouse_ : reverseTrackpad_)) {
        return;
    }
    // All are read before any is written: systems derive some of them from others.
    std::array<double, deltas.size()> values{};
    for (std::size_t i = 0; i < deltas.size(); ++i) {
        values[i] = event.doubleValueField(deltas[i]);
    }
    for (std::size_t i = 0; i < deltas.size(); ++i) {
        event.setDoubleValueField(deltas[i], -values[i]);
    }
}

} // namespace quillon
