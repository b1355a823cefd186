#include "Platform/Linux/tray/HitTest.h"

namespace quillon {

namespace {

/// From the top left corner, where y grows downward: both upper and left edges belong to it.
bool contains(const Rect& frame, Point place) {
    return place.x >= frame.x && place.x < frame.x + frame.width && place.y >= frame.y &&
           place.y < frame.y + frame.height;
}

} // namespace

std::shared_ptr<Button> buttonAt(const std::shared_ptr<View>& root, std::optional<Point> place) {
    const auto& subviews = root->subviews();
    for (auto each = subviews.rbegin(); each != subviews.rend(); ++each) {
        const auto& view = *each;
        const Rect frame = view->frame();
        if (place && !contains(frame, *place)) {
            continue;
        }
        const auto within =
            place ? std::optional(Point{place->x - frame.x, place->y - frame.y}) : std::nullopt;
        if (auto button = buttonAt(view, within)) {
            return button;
        }
    }
    return std::dynamic_pointer_cast<Button>(root);
}

std::string toolTipOf(const View& root) {
    const auto& subviews = root.subviews();
    for (auto each = subviews.rbegin(); each != subviews.rend(); ++each) {
        if (auto text = toolTipOf(**each); !text.empty()) {
            return text;
        }
    }
    return root.toolTip();
}

} // namespace quillon
