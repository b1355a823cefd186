#pragma once

#include <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace quillon::fakes {

struct FakeAlert {
    NSAlertStyle style = NSAlertStyleWarning;
    std::string messageText;
    std::string informativeText;
    std::vector<std::string> buttons;
};

/// Those that were run, as they were then.
std::vector<FakeAlert>& fakeAlerts();

} // namespace quillon::fakes
