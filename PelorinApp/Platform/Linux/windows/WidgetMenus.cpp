#include "Platform/Linux/windows/WidgetMenus.h"

#include "Platform/Linux/windows/Placement.h"
#include "Platform/Linux/windows/ToolkitScreens.h"

namespace quillon {

void WidgetMenus::popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType /*event*/,
                                   const View& /*view*/) {
    const auto event = eventPlace_ ? eventPlace_() : std::nullopt;
    const auto geometry = displays_.geometry();
    const Point pointer =
        event && geometry ? geometry->toPoints(event->x, event->y) : displays_.mouseLocation();
    // Beside it, or the menu would take the end of the click for a choice.
    openAt(*menu, {pointer.x + 1, pointer.y - 1}, {pointer.x, pointer.y - 1, 1, 1});
}

void WidgetMenus::popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) {
    const auto place = view.onScreen();
    if (!place) {
        popUpContextMenu(menu, EventType::leftMouseUp, view);
        return;
    }
    openAt(*menu, {place->minX() + location.x, place->minY() + location.y}, *place);
}

void WidgetMenus::openAt(const Menu& menu, Point corner, const Rect& around) {
    if (open_) {
        open_->close();
    }
    open_.reset(new MenuWidget(menu));
    MenuWidget* opened = open_.get();
    QObject::connect(opened, &QMenu::aboutToHide, opened, [this, opened] {
        if (open_.get() == opened) {
            open_.reset();
        }
    });

    const auto geometry = displays_.geometry();
    const Rect frame = geometry ? screenOf(around, geometry->frames()) : Rect();
    const auto measure = geometry ? ToolkitMeasure::of(frame, *geometry) : std::nullopt;
    if (!measure) {
        opened->openAt({});
        return;
    }
    opened->ensurePolished();
    const Size points = measure->toPoints(opened->sizeHint());
    const auto panel = panel_ == nullptr ? std::nullopt : panel_->panelOnScreen();
    const Rect place = panel && panel->contains(corner)
                           ? placeMenuBeside(*panel, panel_->isVertical(), corner, frame, points)
                           : placeMenu(corner, around, frame, points);
    opened->openAt(measure->cornerOf(place));
}

} // namespace quillon
