#include "Platform/Linux/tray/PanelWindows.h"

#include "Platform/Linux/x11/X11Properties.h"

#include <algorithm>

namespace quillon {

namespace {

using Tree = XcbOwned<xcb_query_tree_reply_t>;

Tree treeOf(const X11Connection& connection, xcb_window_t window) {
    return Tree(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
}

void addDocks(const X11Connection& connection, const TrayAtoms& atoms,
              const std::vector<xcb_window_t>& windows, std::vector<PixelRect>& found) {
    for (const xcb_window_t window : windows) {
        const auto types = cardinals(connection, window, atoms.windowType);
        if (types && std::find(types->begin(), types->end(), atoms.dockType) != types->end()) {
            if (const auto place = placeOf(connection, window)) {
                found.push_back(*place);
            }
        }
    }
}

} // namespace

std::optional<PixelRect> placeOf(const X11Connection& connection, xcb_window_t window) {
    xcb_connection_t* const x = connection.get();
    const auto sizeAsked = xcb_get_geometry(x, window);
    const auto cornerAsked = xcb_translate_coordinates(x, window, connection.root(), 0, 0);
    const XcbOwned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(x, sizeAsked, nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> corner(
        xcb_translate_coordinates_reply(x, cornerAsked, nullptr));
    if (!size || !corner) {
        return std::nullopt;
    }
    return PixelRect{corner->dst_x, corner->dst_y, size->width, size->height};
}

std::optional<xcb_window_t> topLevelOf(const X11Connection& connection, xcb_window_t window) {
    for (;;) {
        const Tree tree = treeOf(connection, window);
        if (!tree || tree->parent == XCB_NONE) {
            return std::nullopt;
        }
        if (tree->parent == connection.root()) {
            return window;
        }
        window = tree->parent;
    }
}

std::vector<PixelRect> docks(const X11Connection& connection, const TrayAtoms& atoms) {
    std::vector<PixelRect> found;
    const auto clients = cardinals(connection, connection.root(), atoms.clientList);
    addDocks(connection, atoms, clients.value_or(std::vector<xcb_window_t>{}), found);
    if (found.empty()) {
        // Not every manager lists them, nor is there always one.
        if (const Tree tree = treeOf(connection, connection.root())) {
            const xcb_window_t* first = xcb_query_tree_children(tree.get());
            addDocks(connection, atoms, {first, first + tree->children_len}, found);
        }
    }
    return found;
}

QImage screenPixels(const X11Connection& connection, const PixelRect& place) {
    xcb_connection_t* const x = connection.get();
    const XcbOwned<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        x,
        xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), ~0U),
        nullptr));
    if (!reply) {
        return {};
    }
    const auto format = reply->depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32;
    const auto length = xcb_get_image_data_length(reply.get());
    const int stride = length / place.height;
    if (stride < place.width * (reply->depth == 16 ? 2 : 4)) {
        return {};
    }
    return QImage(xcb_get_image_data(reply.get()), place.width, place.height, stride, format)
        .copy();
}

std::optional<PixelRect> intersection(const PixelRect& a, const PixelRect& b) {
    const std::int32_t left = std::max(a.x, b.x);
    const std::int32_t top = std::max(a.y, b.y);
    const std::int32_t right = std::min(a.x + a.width, b.x + b.width);
    const std::int32_t bottom = std::min(a.y + a.height, b.y + b.height);
    if (left >= right || top >= bottom) {
        return std::nullopt;
    }
    return PixelRect{left, top, right - left, bottom - top};
}

} // namespace quillon
