#pragma once

#include "Platform/Applications.h"
#include "Platform/WindowServer.h"

#include <QStringList>

#include <string>
#include <vector>

namespace quillon {

/// An application that a switch may bring forward.
struct WindowCandidate {
    ProcessId process = 0;
    std::string ownerName;
    bool operator==(const WindowCandidate&) const = default;
};

/// Applications that are never switched to.
struct WindowExclusions {
    bool xcode = true;
    QStringList names; // whole names, in any letter case

    [[nodiscard]] bool contain(const std::string& ownerName) const;
};

/// The regular applications that have a window of some size on the screen, one entry each, by name.
/// Applications of one name are in the order of their process ids: an order that changed with every
/// switch would leave some of them out of the cycle.
[[nodiscard]] std::vector<WindowCandidate> collectCandidates(WindowServer& windowServer,
                                                             Applications& applications,
                                                             const WindowExclusions& exclusions);

} // namespace quillon
