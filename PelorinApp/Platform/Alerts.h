#pragma once

#include <string>
#include <vector>

namespace quillon {

enum class AlertStyle { informational, warning, critical };

struct Alert {
    AlertStyle style = AlertStyle::informational;
    std::string messageText;
    std::string informativeText;
    std::vector<std::string> buttons; // the first is the default
};

class Alerts {
  public:
    virtual ~Alerts() = default;

    /// Main thread. The user has to answer it before anything else of the program; whether the call
    /// waits for that is the system's affair.
    virtual void runModal(const Alert& alert) = 0;
};

} // namespace quillon
