#include "Tools/Edges/EdgeToolManager.h"

#include "Tools/Edges/AccessibilityCheck.h"

#include <utility>

namespace quillon {

EdgeToolManager::EdgeToolManager(Platform& platform, UserDefaults& defaults,
                                 const EdgeToolTraits& traits)
    : platform_(platform), defaults_(defaults), traits_(traits) {
    const auto loadBool = [&](const Setting<bool>& setting) {
        return boolForKey(defaults, setting.key, setting.fallback, platform.diagnostics);
    };
    isEnabled_ = loadBool(traits.isEnabled);
    band_.width = doubleForKey(defaults, traits.edgeSensitivity.key,
                               traits.edgeSensitivity.fallback, platform.diagnostics);
    band_.left = loadBool(traits.leftEdge);
    band_.right = loadBool(traits.rightEdge);
    band_.top = loadBool(traits.topEdge);
    band_.bottom = loadBool(traits.bottomEdge);
}

void EdgeToolManager::begin() {
    checkAccessibilityPermission();
    permissionCheckTimer_ = scheduleWeakly(platform_, permissionCheckInterval, weak_from_this(),
                                           &EdgeToolManager::checkAccessibilityPermission);
    // The answer to the first question, which is on its way, starts the tool.
}

void EdgeToolManager::teardown() {
    stopMonitoring();
    cancelTimer(permissionCheckTimer_);
    cancelTimer(monitorCheckTimer_);
}

void EdgeToolManager::checkAccessibilityPermission() {
    quillon::checkAccessibilityPermission(platform_, weak_from_this(),
                                          &EdgeToolManager::applyPermissionResult);
}

void EdgeToolManager::applyPermissionResult(bool granted) {
    const bool previous = std::exchange(hasAccessibilityPermission_, granted);
    if (granted != previous) {
        Q_EMIT hasAccessibilityPermissionChanged();
    }
    if (granted && !previous) {
        permissionGranted();
    }
}

void EdgeToolManager::permissionGranted() {
    // The poll ends for good: a later withdrawal is not noticed by it.
    cancelTimer(permissionCheckTimer_);
    if (isEnabled_ && !hasSource()) {
        requestStart();
    }
}

void EdgeToolManager::startMonitoring() {
    if (isStartingMonitor_) {
        return;
    }
    isStartingMonitor_ = true;
    if (mayStart()) {
        stopMonitoring();
        if (installSource() || traits_.healthTimerWithoutSource) {
            cancelTimer(monitorCheckTimer_);
            monitorCheckTimer_ = scheduleWeakly(platform_, monitorCheckInterval, weak_from_this(),
                                                &EdgeToolManager::healthTick);
        }
    }
    isStartingMonitor_ = false;
}

void EdgeToolManager::stopMonitoring() {
    cancelTimer(monitorCheckTimer_);
    removeSource();
}

void EdgeToolManager::healthTick() {
    if (isEnabled_ && hasAccessibilityPermission_ && !hasSource()) {
        requestStart();
    }
}

void EdgeToolManager::restartIfNeeded(bool force) {
    if (!isEnabled_ || !hasAccessibilityPermission_) {
        return;
    }
    if (force) {
        stopMonitoring();
        startMonitoring();
    } else if (!hasSource()) {
        startMonitoring();
    }
}

bool EdgeToolManager::isMouseAtEnabledEdge() const {
    return isInBand(band_, platform_.displays.mouseLocation(), platform_.displays.screens());
}

void EdgeToolManager::setIsEnabled(bool enabled) {
    if (assign(isEnabled_, enabled, traits_.isEnabled.key)) {
        Q_EMIT isEnabledChanged();
    }
    if (enabled) {
        requestStart();
    } else {
        stopMonitoring();
    }
}

void EdgeToolManager::switchOffForNow() {
    if (std::exchange(isEnabled_, false)) {
        Q_EMIT isEnabledChanged();
        stopMonitoring();
    }
}

template <class T>
void EdgeToolManager::setBandSetting(T& field, T value, const char* key,
                                     void (EdgeToolManager::*changed)()) {
    if (assign(field, value, key)) {
        bandChanged();
        Q_EMIT(this->*changed)();
    }
}

void EdgeToolManager::setEdgeSensitivity(double points) {
    setBandSetting(band_.width, points, traits_.edgeSensitivity.key,
                   &EdgeToolManager::edgeSensitivityChanged);
}

void EdgeToolManager::setLeftEdgeEnabled(bool enabled) {
    setBandSetting(band_.left, enabled, traits_.leftEdge.key,
                   &EdgeToolManager::leftEdgeEnabledChanged);
}

void EdgeToolManager::setRightEdgeEnabled(bool enabled) {
    setBandSetting(band_.right, enabled, traits_.rightEdge.key,
                   &EdgeToolManager::rightEdgeEnabledChanged);
}

void EdgeToolManager::setTopEdgeEnabled(bool enabled) {
    setBandSetting(band_.top, enabled, traits_.topEdge.key,
                   &EdgeToolManager::topEdgeEnabledChanged);
}

void EdgeToolManager::setBottomEdgeEnabled(bool enabled) {
    setBandSetting(band_.bottom, enabled, traits_.bottomEdge.key,
                   &EdgeToolManager::bottomEdgeEnabledChanged);
}

} // namespace quillon
