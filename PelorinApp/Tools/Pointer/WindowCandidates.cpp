#include "Tools/Pointer/WindowCandidates.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace quillon {

namespace {

/// In points; what is not larger is a helper of some kind, nothing to work in.
constexpr double smallestWidth = 80;
constexpr double smallestHeight = 60;

constexpr int ordinaryLayer = 0;
constexpr std::string_view ownProcessName = "PelorinApp";

bool isUsable(const WindowDescription& window) {
    return window.layer == ordinaryLayer && window.isOnScreen == true && window.bounds &&
           window.bounds->width > smallestWidth && window.bounds->height > smallestHeight &&
           window.ownerProcess && window.ownerName && *window.ownerName != ownProcessName;
}

bool isRegular(Applications& applications, ProcessId process) {
    const auto application = applications.runningApplication(process);
    return application && application->activationPolicy() == ActivationPolicy::regular;
}

} // namespace

bool WindowExclusions::contain(const std::string& ownerName) const {
    return (xcode && ownerName == "Xcode") ||
           names.contains(QString::fromStdString(ownerName), Qt::CaseInsensitive);
}

std::vector<WindowCandidate> collectCandidates(WindowServer& windowServer,
                                               Applications& applications,
                                               const WindowExclusions& exclusions) {
    std::vector<WindowCandidate> candidates;
    const auto windows = windowServer.copyWindowList(WindowListOptions::excludeDesktopElements);
    if (!windows) {
        return candidates;
    }
    for (const WindowDescription& window : *windows) {
        if (!isUsable(window)) {
            continue;
        }
        const ProcessId process = *window.ownerProcess;
        const bool isListed = std::any_of(candidates.begin(), candidates.end(),
                                          [&](const auto& one) { return one.process == process; });
        if (!isListed && !exclusions.contain(*window.ownerName) &&
            isRegular(applications, process)) {
            candidates.push_back({process, *window.ownerName});
        }
    }
    std::sort(candidates.begin(), candidates.end(), [](const auto& a, const auto& b) {
        return std::tie(a.ownerName, a.process) < std::tie(b.ownerName, b.process);
    });
    return candidates;
}

} // namespace quillon
