#include "Platform/Linux/tray/HitTest.h"

#include <utility>

namespace quillon {

namespace {

/// From the top left corner, where y grows downward: both upper and left edges belong to it.
bool contains(const Rect& frame, Point place) {
    return place.x >= frame.x && place.x < frame.x + frame.width && place.y >= frame.y &&
           place.y < frame.y + frame.height;
}

} // namespace

// Later subviews lie in front of earlier ones, so the last that answers counts.

std::shared_ptr<Button> buttonAt(const std::shared_ptr<View>& root, std::optional<Point> place) {
    auto found = std::dynamic_pointer_cast<Button>(root);
    for (const auto& view : root->subviews()) {
        const Rect frame = view->frame();
        if (place && !contains(frame, *place)) {
            continue;
        }
        const auto within =
            place ? std::optional(Point{place->x - frame.x, place->y - frame.y}) : std::nullopt;
        if (auto button = buttonAt(view, within)) {
            found = std::move(button);
        }
    }
    return found;
}

std::string toolTipOf(const View& root) {
    std::string found = root.toolTip();
    for (const auto& view : root.subviews()) {
        if (auto text = toolTipOf(*view); !text.empty()) {
            found = std::move(text);
        }
    }
    return found;
}

} // namespace quillon
