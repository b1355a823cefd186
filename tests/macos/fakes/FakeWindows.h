#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// What the window server says of a window; nothing of what is absent.
struct FakeListedWindow {
    std::optional<std::int64_t> ownerProcess;
    std::optional<std::string> ownerName;
    std::optional<double> layer;
    std::optional<CGRect> bounds; // from the top left
    std::optional<bool> isOnScreen;
    bool isOfOtherTypes = false; // under every key there is something else than one expects
};

class FakeWindows {
  public:
    struct Request {
        CGWindowListOption option;
        CGWindowID relativeToWindow;
    };

    std::vector<Request> requests;

    /// Front to back; nothing where there is no window server.
    std::optional<std::vector<FakeListedWindow>> windows = std::vector<FakeListedWindow>{};

    void reset() { *this = {}; }
};

FakeWindows& fakeWindows();

} // namespace quillon::fakes
