#include "Platform/Linux/tray/LinuxStatusItem.h"

#include "Platform/Linux/tray/HitTest.h"
#include "Platform/Linux/tray/ViewPainter.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace quillon {

LinuxStatusItem::LinuxStatusItem(const TrayContext& context, double length)
    : context_(context), length_(length),
      button_(std::make_shared<StatusButton>([this] { return size(); })),
      places_(context, *this, squareStatusItemLength) {
    button_->setHost(this);
    context_.runLoop.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            loopRuns_ = true;
        }
    });
}

LinuxStatusItem::~LinuxStatusItem() {
    // Others may hold the views for longer.
    button_->detach(usualSize());
    if (customView_) {
        customView_->setHost(nullptr);
    }
}

void LinuxStatusItem::setLength(double length) {
    length_ = length;
    places_.setLength(shownLength());
}

double LinuxStatusItem::shownLength() const {
    return customView_ ? length_ : squareStatusItemLength;
}

std::shared_ptr<Button> LinuxStatusItem::button() { return customView_ ? nullptr : button_; }

void LinuxStatusItem::setCustomView(std::shared_ptr<View> view) {
    shown()->setHost(nullptr);
    customView_ = std::move(view);
    shown()->setHost(this);
    places_.setLength(shownLength());
    viewChanged();
}

Size LinuxStatusItem::size() const { return places_.size().value_or(usualSize()); }

Size LinuxStatusItem::usualSize() const {
    const double length = shownLength();
    return {length == squareStatusItemLength ? usualThickness : length, usualThickness};
}

void LinuxStatusItem::viewChanged() {
    if (!loopRuns_) {
        // The program is still starting, which may take longer than people should wait for a
        // picture.
        places_.contentChanged();
        return;
    }
    if (std::exchange(redrawing_, true)) {
        return;
    }
    context_.runLoop.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            redrawing_ = false;
            places_.contentChanged();
        }
    });
}

std::optional<Rect> LinuxStatusItem::rootOnScreen() const { return places_.onScreen(); }

/// A custom view has a size of its own and lies in the middle.
Point LinuxStatusItem::indentWithin(Size item) const {
    if (!customView_) {
        return {};
    }
    const Rect bounds = customView_->bounds();
    return {(item.width - bounds.width) / 2, (item.height - bounds.height) / 2};
}

QImage LinuxStatusItem::picture(QSize pixels, std::optional<double> scale,
                                const QColor& label) const {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const Rect bounds =
        customView_ ? customView_->bounds() : Rect{0, 0, usualThickness, usualThickness};
    const double unit = scale.value_or(std::min(pixels.width() / std::max(bounds.width, 1.0),
                                                pixels.height() / std::max(bounds.height, 1.0)));
    const Size item{pixels.width() / unit, pixels.height() / unit};
    const Point indent = indentWithin(item);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(std::round(indent.x * unit), std::round(indent.y * unit));
    paintView(painter, *shown(), customView_ ? Size{bounds.width, bounds.height} : item, unit,
              label);
    return image;
}

/// The desktop knows one item, whose tool tip is that of whatever lies in it.
std::string LinuxStatusItem::toolTip() const { return toolTipOf(*shown()); }

void LinuxStatusItem::clicked(const UserAction& action, std::optional<Point> place) {
    if (place) {
        const Point indent = indentWithin(size());
        place = Point{place->x - indent.x, place->y - indent.y};
    }
    // Held here: what it does may take it, and this item, away.
    if (const std::shared_ptr<Button> button = buttonAt(shown(), place)) {
        const CurrentEvent::Scope scope(context_.currentEvent, action);
        button->receive(action.type);
    }
}

std::shared_ptr<View> LinuxStatusItem::shown() const {
    return customView_ ? customView_ : std::shared_ptr<View>(button_);
}

} // namespace quillon
