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

struct PlaceAsked {
    xcb_get_geometry_cookie_t size;
    xcb_translate_coordinates_cookie_t corner;
};

PlaceAsked askPlace(const X11Connection& connection, xcb_window_t window) {
    xcb_connection_t* const x = connection.get();
    return {xcb_get_geometry(x, window),
            xcb_translate_coordinates(x, window, connection.root(), 0, 0)};
}

std::optional<PixelRect> placeFrom(const X11Connection& connection, const PlaceAsked& asked) {
    xcb_connection_t* const x = connection.get();
    const XcbOwned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(x, asked.size, nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> corner(
        xcb_translate_coordinates_reply(x, asked.corner, nullptr));
    if (!size || !corner) {
        return std::nullopt;
    }
    return PixelRect{corner->dst_x, corner->dst_y, size->width, size->height};
}

bool holds(const xcb_get_property_reply_t& types, xcb_atom_t type) {
    if (types.format != 32) {
        return false;
    }
    const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(&types));
    const auto* end = first + xcb_get_property_value_length(&types) / int{sizeof(xcb_atom_t)};
    return std::find(first, end, type) != end;
}

/// Asks all windows before it hears any: it waits twice, however many there are.
std::vector<PixelRect> docksAmong(const X11Connection& connection, const TrayAtoms& atoms,
                                  const std::vector<xcb_window_t>& windows) {
    constexpr std::uint32_t mostTypes = 32;
    xcb_connection_t* const x = connection.get();
    std::vector<xcb_get_property_cookie_t> typesAsked;
    typesAsked.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        typesAsked.push_back(
            xcb_get_property(x, 0, window, atoms.windowType, XCB_ATOM_ATOM, 0, mostTypes));
    }
    std::vector<PlaceAsked> placesAsked;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const XcbOwned<xcb_get_property_reply_t> types(
            xcb_get_property_reply(x, typesAsked[i], nullptr));
        if (types && holds(*types, atoms.dockType)) {
            placesAsked.push_back(askPlace(connection, windows[i]));
        }
    }
    std::vector<PixelRect> found;
    for (const PlaceAsked& asked : placesAsked) {
        if (const auto place = placeFrom(connection, asked)) {
            found.push_back(*place);
        }
    }
    return found;
}

} // namespace

std::optional<PixelRect> placeOf(const X11Connection& connection, xcb_window_t window) {
    return placeFrom(connection, askPlace(connection, window));
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
    const auto clients = cardinals(connection, connection.root(), atoms.clientList);
    auto found = docksAmong(connection, atoms, clients.value_or(std::vector<xcb_window_t>{}));
    if (found.empty()) {
        // Not every manager lists them, nor is there always one.
        if (const Tree tree = treeOf(connection, connection.root())) {
            const xcb_window_t* first = xcb_query_tree_children(tree.get());
            found = docksAmong(connection, atoms, {first, first + tree->children_len});
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
