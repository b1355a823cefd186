#include "Tools/Pointer/WindowSwitcherManager.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quillon {

namespace {

/// Until then the application has come forward and its windows can be told to.
constexpr double focusDelay = 0.1; // seconds

} // namespace

void WindowSwitcherManager::switchToNextWindow() { cycle(Step::next); }

void WindowSwitcherManager::switchToPreviousWindow() { cycle(Step::previous); }

void WindowSwitcherManager::cycle(Step step) {
    Diagnostics& diagnostics = platform().diagnostics;
    const auto candidates =
        collectCandidates(platform().windowServer, platform().applications, exclusions_);
    publishDetectedApps(candidates);
    if (candidates.empty()) {
        diagnostics.line("⚠️ No windows to switch to");
        return;
    }
    if (candidates.size() == 1) {
        diagnostics.line("ℹ️ Only one window available: " + candidates.front().ownerName);
        return;
    }
    const RunningApplicationRef front = platform().applications.frontmostApplication();
    const auto found = std::find_if(candidates.begin(), candidates.end(), [&](const auto& one) {
        return front && one.process == front->processIdentifier();
    });
    const auto position = found != candidates.end()
                              ? static_cast<std::size_t>(found - candidates.begin())
                              : windowCycleIndex_;
    const std::size_t count = candidates.size();
    const std::size_t base = step == Step::next ? position + 1 : position + count - 1;
    windowCycleIndex_ = base % count;
    const WindowCandidate& target = candidates[windowCycleIndex_];
    lastActivatedPID_ = target.process;
    const auto name = front ? front->localizedName() : std::nullopt;
    diagnostics.line("🔄 [" + std::to_string(windowCycleIndex_ + 1) + '/' + std::to_string(count) +
                     "] Cycling from " + name.value_or("Unknown") + " → " + target.ownerName);
    activate(target);
}

void WindowSwitcherManager::publishDetectedApps(const std::vector<WindowCandidate>& candidates) {
    QStringList names;
    for (const WindowCandidate& candidate : candidates) {
        names.append(QString::fromStdString(candidate.ownerName));
    }
    platform().runLoop.async([weak = weak_from_this(), names = std::move(names)] {
        const auto self = std::static_pointer_cast<WindowSwitcherManager>(weak.lock());
        if (self && std::exchange(self->detectedApps_, names) != names) {
            Q_EMIT self->detectedAppsChanged();
        }
    });
}

void WindowSwitcherManager::activate(const WindowCandidate& target) {
    auto application = platform().applications.runningApplication(target.process);
    if (!application) {
        platform().diagnostics.line("❌ Could not find app with PID: " +
                                    std::to_string(target.process));
        return;
    }
    application->activate(ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps);
    platform().runLoop.asyncAfter(
        focusDelay, [weak = weak_from_this(), application = std::move(application), target] {
            if (const auto self = std::static_pointer_cast<WindowSwitcherManager>(weak.lock())) {
                focusFirstWindow(self->platform(), *application, target);
            }
        });
}

void WindowSwitcherManager::focusFirstWindow(Platform& platform, RunningApplication& application,
                                             const WindowCandidate& target) {
    const auto element = platform.accessibilityElements.application(target.process);
    const auto windows = element->elements("AXWindows");
    std::string line = "✅ Switched to: " + target.ownerName;
    if (windows && !windows->empty()) {
        const AccessibilityElementRef& window = windows->front();
        element->setElement("AXFocusedWindow", window);
        window->setBool("AXMain", true);
        window->performAction("AXRaise");
    } else {
        line += " (fallback)";
    }
    application.activate(ActivationOptions::ignoringOtherApps);
    platform.diagnostics.line(line);
}

} // namespace quillon
