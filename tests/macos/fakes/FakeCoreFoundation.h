#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <vector>

namespace quillon::fakes {

/// What the C services of the system have been asked for, and what they will answer.
class FakeCoreFoundation {
  public:
    /// Objects that have been made or copied and not been released; constants do not count.
    [[nodiscard]] static long livingObjects();

    /// Calls that change which events come, in the order in which they were made: the name of each
    /// function and, in parentheses, the mode or whether it switches on.
    std::vector<std::string> calls;

    /// Whether CFMachPortCreateRunLoopSource gives one.
    bool makesSources = true;

    /// The `order` that run-loop sources were made with.
    std::vector<CFIndex> sourceOrders;

    /// The modes of the main run loop in which a source of the port is.
    [[nodiscard]] static std::vector<std::string> modesOf(CFMachPortRef port);

    /// Forgets records and answers. Objects stay.
    void reset() { *this = {}; }
};

FakeCoreFoundation& fakeCoreFoundation();

} // namespace quillon::fakes
