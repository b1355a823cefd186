#include "Tools/Pointer/WindowSwitcherManager.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

constexpr EdgeToolTraits windowTraits{
    .isEnabled = {"WindowSwitcher_IsEnabled", false},
    .edgeSensitivity = {"WindowSwitcher_EdgeSensitivity", 50.0},
    .leftEdge = {"WindowSwitcher_LeftEdge", false},
    .rightEdge = {"WindowSwitcher_RightEdge", false},
    .topEdge = {"WindowSwitcher_TopEdge", false},
    .bottomEdge = {"WindowSwitcher_BottomEdge", false},
    .healthTimerWithoutSource = true,
};
constexpr Setting<double> edgeScrollStepsSetting{"WindowSwitcher_EdgeScrollSteps", 4.0};
constexpr Setting<bool> threeFingerGestureSetting{"WindowSwitcher_ThreeFingerGesture", false};
constexpr Setting<bool> excludeXcodeSetting{"WindowSwitcher_ExcludeXcode", true};
constexpr const char* excludedAppNamesKey = "WindowSwitcher_ExcludedAppNames";

// An older release stored the way of a finger per switch instead of notches.
constexpr const char* scrollStepPointsKey = "WindowSwitcher_ScrollStepPoints";
constexpr double pointsPerNotch = 22.0;

UserDefaults& openStore(UserDefaultsStores& stores) {
    UserDefaults* suite = stores.suite("com.pelorin.shared");
    return suite != nullptr ? *suite : stores.standard();
}

double loadEdgeScrollSteps(const UserDefaults& defaults, Diagnostics& diagnostics) {
    constexpr double fewest = 1.0;
    constexpr double most = 10.0;
    double steps = edgeScrollStepsSetting.fallback;
    if (const auto stored = storedDouble(defaults, edgeScrollStepsSetting.key, diagnostics)) {
        steps = *stored;
    } else if (const auto points = storedDouble(defaults, scrollStepPointsKey, diagnostics)) {
        steps = std::round(*points / pointsPerNotch);
    }
    return std::clamp(steps, fewest, most);
}

QStringList toQStrings(const StringList& strings) {
    QStringList list;
    for (const auto& string : strings) {
        list.append(QString::fromStdString(string));
    }
    return list;
}

StringList toStrings(const QStringList& strings) {
    StringList list;
    for (const auto& string : strings) {
        list.push_back(string.toStdString());
    }
    return list;
}

} // namespace

WindowSwitcherManager& WindowSwitcherManager::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance = *new std::shared_ptr<WindowSwitcherManager>(
        makeManager<WindowSwitcherManager>(Platform::current(), ThreeFingerTouchMonitor::shared()));
    return *instance;
}

std::shared_ptr<WindowSwitcherManager> WindowSwitcherManager::create(Platform& platform) {
    return makeManager<WindowSwitcherManager>(
        platform, std::make_shared<ThreeFingerTouchMonitor>(platform.runLoop, platform.libraries));
}

WindowSwitcherManager::WindowSwitcherManager(Platform& platform,
                                             std::shared_ptr<ThreeFingerTouchMonitor> monitor)
    : EdgeScrollManager(
          platform, openStore(platform.userDefaults), windowTraits, toolId,
          edgeScrollStepsSetting.key,
          loadEdgeScrollSteps(openStore(platform.userDefaults), platform.diagnostics)),
      threeFingerPress_(platform, std::move(monitor),
                        [this] { return threeFingerGestureEnabled_; }),
      threeFingerGestureEnabled_(boolForKey(defaults(), threeFingerGestureSetting.key,
                                            threeFingerGestureSetting.fallback,
                                            platform.diagnostics)),
      exclusions_{
          boolForKey(defaults(), excludeXcodeSetting.key, excludeXcodeSetting.fallback,
                     platform.diagnostics),
          toQStrings(stringsForKey(defaults(), excludedAppNamesKey, platform.diagnostics))} {}

void WindowSwitcherManager::setEdgeScrollSteps(double notches) {
    if (setNotchesPerAction(notches)) {
        Q_EMIT edgeScrollStepsChanged();
    }
}

void WindowSwitcherManager::setThreeFingerGestureEnabled(bool enabled) {
    if (assign(threeFingerGestureEnabled_, enabled, threeFingerGestureSetting.key)) {
        threeFingerPress_.update();
        Q_EMIT threeFingerGestureEnabledChanged();
    }
}

void WindowSwitcherManager::setExcludeXcode(bool exclude) {
    if (assign(exclusions_.xcode, exclude, excludeXcodeSetting.key)) {
        Q_EMIT excludeXcodeChanged();
    }
}

void WindowSwitcherManager::setExcludedAppNames(const QStringList& names) {
    const bool changed = std::exchange(exclusions_.names, names) != names;
    persist(excludedAppNamesKey, toStrings(names));
    if (changed) {
        Q_EMIT excludedAppNamesChanged();
    }
}

void WindowSwitcherManager::requestStart() {
    if (!hasAccessibilityPermission()) {
        platform().diagnostics.line("⚠️ Cannot start monitoring: no accessibility permission");
        return;
    }
    platform().runLoop.async([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->startMonitoring();
        }
    });
}

void WindowSwitcherManager::permissionGranted() {
    // While the tool is off the poll goes on.
    if (isEnabled()) {
        platform().diagnostics.line("🔄 Window switcher: Permission granted, starting monitoring…");
        EdgeScrollManager::permissionGranted();
    }
}

bool WindowSwitcherManager::installSource() {
    const bool installed = EdgeScrollManager::installSource();
    if (!installed) {
        platform().diagnostics.line("⚠️ Failed to install scroll event tap");
    }
    if (threeFingerGestureEnabled_) {
        threeFingerPress_.start();
    }
    platform().diagnostics.line(
        "✅ Window switcher monitoring started (scroll wheel + three-finger)");
    return installed;
}

void WindowSwitcherManager::removeSource() {
    EdgeScrollManager::removeSource();
    threeFingerPress_.stop();
}

void WindowSwitcherManager::stopMonitoring() {
    EdgeScrollManager::stopMonitoring();
    platform().diagnostics.line("🛑 Window switcher monitoring stopped");
}

void WindowSwitcherManager::healthTick() {
    if (!isEnabled() || !hasAccessibilityPermission()) {
        return;
    }
    if (hasSource()) {
        platform().diagnostics.line("✅ Window switcher: monitor is active");
    } else {
        platform().diagnostics.line("⚠️ Window switcher: scroll tap missing, restarting…");
        requestStart();
    }
}

void WindowSwitcherManager::positiveAction() {
    platform().diagnostics.line("🔼 Scroll UP/RIGHT detected near edge - Next window");
    switchToNextWindow();
}

void WindowSwitcherManager::negativeAction() {
    platform().diagnostics.line("🔽 Scroll DOWN/LEFT detected near edge - Previous window");
    switchToPreviousWindow();
}

} // namespace quillon
