#include "Platform/Linux/windows/Placement.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillon {

namespace {

Point centre(const Rect& rect) { return {rect.x + rect.width / 2, rect.y + rect.height / 2}; }

bool touch(const Rect& a, const Rect& b) {
    return a.minX() <= b.maxX() && b.minX() <= a.maxX() && a.minY() <= b.maxY() &&
           b.minY() <= a.maxY();
}

bool overlap(const Rect& a, const Rect& b) {
    return a.minX() < b.maxX() && b.minX() < a.maxX() && a.minY() < b.maxY() && b.minY() < a.maxY();
}

Rect united(const Rect& a, const Rect& b) {
    const double x = std::min(a.minX(), b.minX());
    const double y = std::min(a.minY(), b.minY());
    return {x, y, std::max(a.maxX(), b.maxX()) - x, std::max(a.maxY(), b.maxY()) - y};
}

/// `start` moved so that `length` from there fits between the ends; the low end counts more.
double keepLow(double start, double length, double low, double high) {
    return std::max(low, std::min(start, high - length));
}

/// The same, but the high end counts more.
double keepHigh(double start, double length, double low, double high) {
    return std::min(high - length, std::max(start, low));
}

Rect onto(const Rect& screen, Rect rect) {
    rect.x = keepLow(rect.x, rect.width, screen.minX(), screen.maxX());
    rect.y = keepHigh(rect.y, rect.height, screen.minY(), screen.maxY());
    return rect;
}

bool isSideways(RectEdge edge) { return edge == RectEdge::minX || edge == RectEdge::maxX; }

RectEdge opposite(RectEdge edge) {
    switch (edge) {
    case RectEdge::minX:
        return RectEdge::maxX;
    case RectEdge::maxX:
        return RectEdge::minX;
    case RectEdge::minY:
        return RectEdge::maxY;
    case RectEdge::maxY:
        return RectEdge::minY;
    }
    return edge;
}

/// The edge of a panel that faces the middle of the screen.
RectEdge innerEdge(const Rect& panel, bool isVertical, const Rect& screen) {
    const Point middle = centre(screen);
    if (isVertical) {
        return centre(panel).x <= middle.x ? RectEdge::maxX : RectEdge::minX;
    }
    return centre(panel).y >= middle.y ? RectEdge::minY : RectEdge::maxY;
}

/// The room between an edge of the obstacle and that end of the screen.
double room(const Rect& obstacle, RectEdge edge, const Rect& screen) {
    switch (edge) {
    case RectEdge::minX:
        return obstacle.minX() - screen.minX();
    case RectEdge::maxX:
        return screen.maxX() - obstacle.maxX();
    case RectEdge::minY:
        return obstacle.minY() - screen.minY();
    case RectEdge::maxY:
        return screen.maxY() - obstacle.maxY();
    }
    return 0;
}

bool fits(const Rect& obstacle, RectEdge edge, const Rect& screen, Size size, double gap) {
    return room(obstacle, edge, screen) >= gap + (isSideways(edge) ? size.width : size.height);
}

Rect beside(const Rect& obstacle, RectEdge edge, Point middle, const Rect& screen, Size size,
            double gap) {
    Rect rect{0, 0, size.width, size.height};
    if (isSideways(edge)) {
        rect.x =
            edge == RectEdge::minX ? obstacle.minX() - gap - size.width : obstacle.maxX() + gap;
        rect.y = keepHigh(middle.y - size.height / 2, size.height, screen.minY() + gap,
                          screen.maxY() - gap);
    } else {
        rect.y =
            edge == RectEdge::minY ? obstacle.minY() - gap - size.height : obstacle.maxY() + gap;
        rect.x = keepLow(middle.x - size.width / 2, size.width, screen.minX() + gap,
                         screen.maxX() - gap);
    }
    return onto(screen, rect);
}

} // namespace

Rect placePopover(const PopoverSite& site, RectEdge preferredEdge, Size size, double gap) {
    const Point middle = centre(site.anchor);
    if (site.panel && touch(*site.panel, site.anchor)) {
        const RectEdge edge = innerEdge(*site.panel, site.panelIsVertical, site.screen);
        const Rect obstacle = united(*site.panel, site.anchor);
        // A panel may be as large as the screen; then only the anchor is kept free.
        const bool isClear = fits(obstacle, edge, site.screen, size, gap);
        return beside(isClear ? obstacle : site.anchor, edge, middle, site.screen, size, gap);
    }
    RectEdge edge = preferredEdge;
    if (!fits(site.anchor, edge, site.screen, size, gap) &&
        fits(site.anchor, opposite(edge), site.screen, size, gap)) {
        edge = opposite(edge);
    }
    return beside(site.anchor, edge, middle, site.screen, size, gap);
}

Rect placePopoverWithoutAnchor(const Rect& screen, const std::optional<Rect>& panel,
                               bool panelIsVertical, Size size, double gap) {
    double right = screen.maxX();
    double top = screen.maxY();
    if (panel && overlap(*panel, screen)) {
        const RectEdge edge = innerEdge(*panel, panelIsVertical, screen);
        if (edge == RectEdge::minY && fits(*panel, edge, screen, size, gap)) {
            top = panel->minY();
        } else if (edge == RectEdge::minX && fits(*panel, edge, screen, size, gap)) {
            right = panel->minX();
        }
    }
    return onto(screen,
                {right - gap - size.width, top - gap - size.height, size.width, size.height});
}

Rect placeMenu(Point corner, const Rect& around, const Rect& screen, Size size) {
    Rect menu = onto(screen, {corner.x, corner.y - size.height, size.width, size.height});
    if (!overlap(menu, around)) {
        return menu;
    }
    menu.y = around.maxY();
    menu = onto(screen, menu);
    if (!overlap(menu, around)) {
        return menu;
    }
    const bool right = screen.maxX() - around.maxX() >= around.minX() - screen.minX();
    menu.x = right ? around.maxX() : around.minX() - size.width;
    menu.y = around.maxY() - size.height;
    return onto(screen, menu);
}

Size roomBeside(const std::optional<Rect>& panel, bool isVertical, const Rect& screen, double gap) {
    const bool isHere = panel && overlap(*panel, screen);
    const double taken = isHere ? (isVertical ? panel->width : panel->height) : 0;
    return {screen.width - 2 * gap - (isVertical ? taken : 0),
            screen.height - 2 * gap - (isVertical ? 0 : taken)};
}

Rect placeMenuBeside(const Rect& panel, bool isVertical, Point corner, const Rect& screen,
                     Size size) {
    const Point middle = centre(panel);
    const Point screenMiddle = centre(screen);
    Rect menu{corner.x, corner.y - size.height, size.width, size.height};
    if (isVertical) {
        menu.x = middle.x < screenMiddle.x ? panel.maxX() : panel.minX() - size.width;
    } else {
        menu.y = middle.y > screenMiddle.y ? panel.minY() - size.height : panel.maxY();
    }
    return onto(screen, menu);
}

Rect screenOf(const Rect& rect, std::span<const Rect> screens) {
    const Point middle = centre(rect);
    if (const Rect* found = screenContaining(middle, screens)) {
        return *found;
    }
    const auto distance = [&](const Rect& screen) {
        return std::hypot(middle.x - std::clamp(middle.x, screen.minX(), screen.maxX()),
                          middle.y - std::clamp(middle.y, screen.minY(), screen.maxY()));
    };
    return *std::min_element(screens.begin(), screens.end(), [&](const Rect& a, const Rect& b) {
        return distance(a) < distance(b);
    });
}

} // namespace quillon
