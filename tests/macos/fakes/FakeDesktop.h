#pragma once

#include <CoreFoundation/CFCGTypes.h>

#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// The screens, the applications that run, and what is opened.
class FakeDesktop {
  public:
    struct App {
        int process = 0;
        std::optional<std::string> name;
        long activationPolicy = 0;
    };
    struct Activation {
        int process;
        unsigned long options;
        bool operator==(const Activation&) const = default;
    };

    std::vector<CGRect> screens;
    std::vector<App> apps;
    std::optional<int> frontmost; // its process
    bool reducesMotion = false;
    bool increasesContrast = false;

    std::vector<Activation> activations;
    std::vector<std::string> opened; // addresses

    /// Posts the notice of changed display options, to those who observe it at the workspace's own
    /// center.
    void changeDisplayOptions(bool reduceMotion, bool increaseContrast);

    void reset() { *this = {}; }
};

FakeDesktop& fakeDesktop();

} // namespace quillon::fakes
