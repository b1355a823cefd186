#include "Tools/Edges/VolumeControlManager.h"

#include "Tools/Edges/NotchAccumulator.h"

#include <cmath>

namespace quillon {

namespace {

constexpr EdgeToolTraits volumeTraits{
    .isEnabled = {"Tool5EnabledState", true},
    .edgeSensitivity = {"Tool5EdgeSensitivity", 40.0},
    .leftEdge = {"Tool5LeftEdge", false},
    .rightEdge = {"Tool5RightEdge", false},
    .topEdge = {"Tool5TopEdge", false},
    .bottomEdge = {"Tool5BottomEdge", false},
    .healthTimerWithoutSource = true,
};
constexpr Setting<double> volumeStepsSetting{"Tool5VolumeSteps", 1.0};
constexpr Setting<double> tool5ScrollSensitivitySetting{"Tool5ScrollSensitivity", 1.0};

/// A trackpad sends far more events than a person means steps.
constexpr Moment minTimeBetweenAdjustments = std::chrono::milliseconds(85);

/// Of both axes added; 0 when they cancel in either unit.
double deltaOf(const MonitoredEvent& event) {
    constexpr double nothing = 0.000001;
    double delta = event.scrollingDeltaY + event.scrollingDeltaX;
    if (std::fabs(delta) <= nothing) {
        delta = event.deltaY + event.deltaX;
    }
    return std::fabs(delta) <= nothing ? 0 : delta;
}

} // namespace

VolumeControlManager& VolumeControlManager::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance =
        *new std::shared_ptr<VolumeControlManager>(create(Platform::current()));
    return *instance;
}

VolumeControlManager::VolumeControlManager(Platform& platform)
    : EdgeToolManager(platform, platform.userDefaults.standard(), volumeTraits),
      volumeSteps_(doubleForKey(defaults(), volumeStepsSetting.key, volumeStepsSetting.fallback,
                                platform.diagnostics)),
      scrollSensitivity_(doubleForKey(defaults(), tool5ScrollSensitivitySetting.key,
                                      tool5ScrollSensitivitySetting.fallback,
                                      platform.diagnostics)),
      eventMonitor_(platform.monitors) {}

void VolumeControlManager::setVolumeSteps(double steps) {
    if (assign(volumeSteps_, steps, volumeStepsSetting.key)) {
        Q_EMIT volumeStepsChanged();
    }
}

std::int64_t VolumeControlManager::clampedVolumeSteps() const { return clampedSteps(volumeSteps_); }

void VolumeControlManager::setScrollSensitivity(double sensitivity) {
    if (std::exchange(scrollSensitivity_, sensitivity) != sensitivity) {
        Q_EMIT scrollSensitivityChanged();
    }
}

bool VolumeControlManager::installSource() {
    const bool installed =
        eventMonitor_.install(eventMask(EventType::scrollWheel),
                              handlerFor(this, &VolumeControlManager::handleScroll), toolId);
    bandChanged();
    return installed;
}

void VolumeControlManager::stopMonitoring() {
    EdgeToolManager::stopMonitoring();
    lastVolumeAdjustmentTime_.reset();
}

void VolumeControlManager::handleScroll(const MonitoredEvent& event) {
    if (!isMouseAtEnabledEdge()) {
        return;
    }
    const double delta = deltaOf(event);
    if (delta == 0) {
        return;
    }
    const Moment now = momentNow(platform().runLoop);
    if (lastVolumeAdjustmentTime_ && now - *lastVolumeAdjustmentTime_ < minTimeBetweenAdjustments) {
        return;
    }
    lastVolumeAdjustmentTime_ = now;
    platform().runLoop.asyncBackground([step = step(), up = delta > 0] {
        if (step.isStillWanted()) {
            step.run(up);
        }
    });
}

VolumeStep VolumeControlManager::step() const {
    return {platform(), weak_from_this(), levelReport_, clampedVolumeSteps()};
}

} // namespace quillon
