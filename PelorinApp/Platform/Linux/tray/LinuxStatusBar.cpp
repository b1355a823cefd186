#include "Platform/Linux/tray/LinuxStatusBar.h"

namespace quillon {

std::shared_ptr<StatusItem> LinuxStatusBar::statusItem(double length) {
    if (!item_.expired()) {
        return nullptr;
    }
    auto item = std::make_shared<LinuxStatusItem>(context_, length);
    item_ = item;
    return item;
}

double LinuxStatusBar::thickness() const {
    const auto item = item_.lock();
    return item ? item->size().height : usualThickness;
}

std::optional<Rect> LinuxStatusBar::panelOnScreen() const {
    const auto item = item_.lock();
    return item ? item->panelOnScreen() : std::nullopt;
}

bool LinuxStatusBar::isVertical() const {
    const auto item = item_.lock();
    return item && item->isVertical();
}

} // namespace quillon
