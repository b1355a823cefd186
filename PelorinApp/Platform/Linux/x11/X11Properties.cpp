#include "Platform/Linux/x11/X11Properties.h"

namespace quillon {

namespace {

constexpr std::uint32_t longestProperty = 1 << 18; // in units of four bytes

} // namespace

std::span<const std::uint32_t> valuesOf(const AskedProperty::Reply& reply) {
    if (!reply || reply->format != 32) {
        return {};
    }
    return {static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                sizeof(std::uint32_t)};
}

std::optional<std::uint32_t> firstOf(const AskedProperty::Reply& reply) {
    const auto values = valuesOf(reply);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

std::string_view bytesOf(const AskedProperty::Reply& reply) {
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::optional<std::vector<std::uint32_t>> cardinals(const X11Connection& connection,
                                                    xcb_window_t window, xcb_atom_t property) {
    const auto reply = AskedProperty(connection.get(), window, property, longestProperty).reply();
    if (!reply || reply->format != 32) {
        return std::nullopt;
    }
    const auto values = valuesOf(reply);
    return std::vector<std::uint32_t>(values.begin(), values.end());
}

std::optional<std::uint32_t> cardinal(xcb_connection_t* connection, xcb_window_t window,
                                      xcb_atom_t property) {
    return firstOf(AskedProperty(connection, window, property, 1).reply());
}

std::optional<std::uint32_t> cardinal(const X11Connection& connection, xcb_window_t window,
                                      xcb_atom_t property) {
    return cardinal(connection.get(), window, property);
}

std::optional<std::string> text(const X11Connection& connection, xcb_window_t window,
                                xcb_atom_t property) {
    const auto reply = AskedProperty(connection.get(), window, property, longestProperty).reply();
    if (!reply || reply->format != 8) {
        return std::nullopt;
    }
    return std::string(bytesOf(reply));
}

} // namespace quillon
