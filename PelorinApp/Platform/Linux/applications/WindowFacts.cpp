#include "Platform/Linux/applications/WindowFacts.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace quillon {

namespace {

bool isOnDesktop(const WindowState& state, std::optional<std::uint32_t> current) {
    return !state.desktop || !current || *state.desktop == *current ||
           *state.desktop == everyDesktop;
}

/// Some write the name of a machine with its domain, some without.
bool isSameMachine(std::string_view a, std::string_view b) {
    const auto host = [](std::string_view name) { return name.substr(0, name.find('.')); };
    const auto left = host(a);
    const auto right = host(b);
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

bool isOnScreen(const WindowState& state, std::optional<std::uint32_t> current) {
    return state.isManaged && isOnDesktop(state, current) && !isMinimised(state, current);
}

bool isMinimised(const WindowState& state, std::optional<std::uint32_t> current) {
    if (state.isShaded) {
        return false;
    }
    return state.isHidden || (state.isIconic && isOnDesktop(state, current));
}

int layerOf(WindowKind kind) {
    switch (kind) {
    case WindowKind::desktop:
        return -1;
    case WindowKind::ordinary:
        return 0;
    case WindowKind::palette:
        return 3;
    case WindowKind::dock:
        return 20;
    case WindowKind::notice:
        return 25;
    case WindowKind::menu:
        return 101;
    case WindowKind::tip:
        return 102;
    }
    return 0;
}

bool hasTaskbarButton(const WindowFacts& window) {
    return window.kind == WindowKind::ordinary && !window.state.skipsTaskbar;
}

std::optional<ProcessId> ownerProcess(const WindowFacts& window, const std::string& thisMachine) {
    const bool isHere = window.machine.empty() || isSameMachine(window.machine, thisMachine);
    return window.claimedProcess && isHere ? window.claimedProcess : window.connectedProcess;
}

std::optional<Rect> boundsOf(const WindowFacts& window, const ScreenGeometry& geometry) {
    if (!window.interior) {
        return std::nullopt;
    }
    const PixelRect& inside = *window.interior;
    const std::int32_t left = inside.x + window.shadow.left - window.frame.left;
    const std::int32_t top = inside.y + window.shadow.top - window.frame.top;
    const std::int32_t right = inside.x + inside.width - window.shadow.right + window.frame.right;
    const std::int32_t bottom =
        inside.y + inside.height - window.shadow.bottom + window.frame.bottom;
    const double scale = geometry.pixelsPerPoint();
    const Point corner = geometry.toPoints(left, top);
    return Rect{corner.x, geometry.frames().front().maxY() - corner.y,
                std::max(right - left, 0) / scale, std::max(bottom - top, 0) / scale};
}

} // namespace quillon
