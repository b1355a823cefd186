#pragma once

#include "Platform/Applications.h"
#include "Platform/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// What the window server says of a window. What it does not know is absent.
struct WindowDescription {
    std::optional<ProcessId> ownerProcess;
    std::optional<std::string> ownerName;
    std::optional<int> layer;   // 0 is where ordinary windows are
    std::optional<Rect> bounds; // points, origin at the main screen's top left, frame included
    std::optional<bool> isOnScreen;
};

enum class WindowListOptions : std::uint32_t {
    excludeDesktopElements = 16, // the background, and what lies on it
};

/// The windows of all programs. Main thread only.
class WindowServer {
  public:
    virtual ~WindowServer() = default;

    /// Front to back; nothing when there is no list to be had.
    virtual std::optional<std::vector<WindowDescription>>
    copyWindowList(WindowListOptions options) = 0;
};

} // namespace quillon
