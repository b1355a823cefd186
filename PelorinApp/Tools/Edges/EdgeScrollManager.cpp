#include "Tools/Edges/EdgeScrollManager.h"

#include <cmath>
#include <memory>

namespace quillon {

EdgeScrollManager::EdgeScrollManager(Platform& platform, UserDefaults& defaults,
                                     const EdgeToolTraits& traits, std::string_view toolId,
                                     const char* notchesKey, double notchesPerAction)
    : EdgeToolManager(platform, defaults, traits), toolId_(toolId), notchesKey_(notchesKey),
      notchesPerAction_(notchesPerAction), scrollTap_(platform, EventType::scrollWheel) {}

Event* EdgeScrollManager::tapCallback(EventType type, Event* event, void* userInfo) {
    auto* manager = static_cast<EdgeScrollManager*>(userInfo);
    if (manager == nullptr) {
        return event;
    }
    if (type == EventType::tapDisabledByTimeout || type == EventType::tapDisabledByUserInput) {
        manager->scrollTap_.reenable();
        return event;
    }
    if (type != EventType::scrollWheel || !manager->isMouseAtEnabledEdge()) {
        return event;
    }
    // The rest happens behind the event, which must not wait for it.
    auto self = std::static_pointer_cast<EdgeScrollManager>(manager->shared_from_this());
    manager->platform().runLoop.async([self = std::move(self), sample = classifyScroll(*event)] {
        self->handleEdgeScroll(sample);
    });
    return nullptr;
}

void EdgeScrollManager::handleEdgeScroll(const ScrollSample& sample) {
    switch (notches_.add(sample, clampedSteps(notchesPerAction_))) {
    case NotchAccumulator::Action::positive:
        positiveAction();
        break;
    case NotchAccumulator::Action::negative:
        negativeAction();
        break;
    case NotchAccumulator::Action::none:
        break;
    }
}

bool EdgeScrollManager::setNotchesPerAction(double notches) {
    constexpr double tolerance = 0.001;
    const auto whole = static_cast<double>(clampedSteps(notches));
    const double stored = std::fabs(whole - notches) > tolerance ? whole : notches;
    return assign(notchesPerAction_, stored, notchesKey_);
}

bool EdgeScrollManager::installSource() {
    const bool installed = scrollTap_.install(&EdgeScrollManager::tapCallback, this, toolId_);
    bandChanged();
    return installed;
}

void EdgeScrollManager::bandChanged() {
    if (!band().isArmed()) {
        scrollTap_.setArmedAt(nullptr);
        return;
    }
    scrollTap_.setArmedAt([band = band()](Point pointer, std::span<const Rect> screens) {
        return isInBand(band, pointer, screens);
    });
}

void EdgeScrollManager::stopMonitoring() {
    EdgeToolManager::stopMonitoring();
    forgetNotches();
}

} // namespace quillon
