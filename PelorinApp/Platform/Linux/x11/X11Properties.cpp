#include "Platform/Linux/x11/X11Properties.h"

#include <cstring>

namespace quillon {

namespace {

constexpr std::uint32_t longestProperty = 1 << 18; // in units of four bytes

XcbOwned<xcb_get_property_reply_t> read(const X11Connection& connection, xcb_window_t window,
                                        xcb_atom_t property) {
    return XcbOwned<xcb_get_property_reply_t>(
        xcb_get_property_reply(connection.get(),
                               xcb_get_property(connection.get(), 0, window, property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
                               nullptr));
}

} // namespace

std::optional<std::vector<std::uint32_t>> cardinals(const X11Connection& connection,
                                                    xcb_window_t window, xcb_atom_t property) {
    const auto reply = read(connection, window, property);
    if (!reply || reply->format != 32) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> values(
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
        sizeof(std::uint32_t));
    if (!values.empty()) {
        std::memcpy(values.data(), xcb_get_property_value(reply.get()),
                    values.size() * sizeof(std::uint32_t));
    }
    return values;
}

std::optional<std::uint32_t> cardinal(const X11Connection& connection, xcb_window_t window,
                                      xcb_atom_t property) {
    const auto values = cardinals(connection, window, property);
    return values && !values->empty() ? std::optional(values->front()) : std::nullopt;
}

std::optional<std::string> text(const X11Connection& connection, xcb_window_t window,
                                xcb_atom_t property) {
    const auto reply = read(connection, window, property);
    if (!reply || reply->format != 8) {
        return std::nullopt;
    }
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

} // namespace quillon
