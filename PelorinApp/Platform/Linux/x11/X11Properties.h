#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The property's 32-bit values; nothing when it is not set or has another format.
[[nodiscard]] std::optional<std::vector<std::uint32_t>>
cardinals(const X11Connection& connection, xcb_window_t window, xcb_atom_t property);

/// The first of them.
[[nodiscard]] std::optional<std::uint32_t> cardinal(const X11Connection& connection,
                                                    xcb_window_t window, xcb_atom_t property);
[[nodiscard]] std::optional<std::uint32_t> cardinal(xcb_connection_t* connection,
                                                    xcb_window_t window, xcb_atom_t property);

/// The property's bytes; nothing when it is not set.
[[nodiscard]] std::optional<std::string> text(const X11Connection& connection, xcb_window_t window,
                                              xcb_atom_t property);

/// Of many properties, each can be asked for before any is heard, which waits only once.
class AskedProperty {
  public:
    using Reply = XcbOwned<xcb_get_property_reply_t>;

    /// At most `longest` units of four bytes, of any type.
    AskedProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                  std::uint32_t longest)
        : connection_(connection),
          cookie_(xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                   longest)) {}

    /// To be called once. Null when the window is gone.
    [[nodiscard]] Reply reply() const {
        return Reply(xcb_get_property_reply(connection_, cookie_, nullptr));
    }

  private:
    xcb_connection_t* connection_;
    xcb_get_property_cookie_t cookie_;
};

/// The 32-bit values of a reply, which may be null; empty when it has another format.
[[nodiscard]] std::span<const std::uint32_t> valuesOf(const AskedProperty::Reply& reply);

/// The first of them.
[[nodiscard]] std::optional<std::uint32_t> firstOf(const AskedProperty::Reply& reply);

/// The bytes of a reply, which may be null; empty when it has another format.
[[nodiscard]] std::string_view bytesOf(const AskedProperty::Reply& reply);

} // namespace quillon
