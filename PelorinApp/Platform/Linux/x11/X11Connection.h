#pragma once

#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include <xcb/xcb.h>

namespace quillon {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error that xcb allocated.
template <class T>
using XcbOwned = std::unique_ptr<T, FreeDeleter>;

/// One client connection to the X server of $DISPLAY. Each thread that talks to the server has its
/// own, so that none ever waits for another's round trip.
class X11Connection {
  public:
    /// Null when there is no server, or it does not let us in.
    static std::unique_ptr<X11Connection> open();

    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;
    ~X11Connection();

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection_); }

    /// The server is gone, or has closed this connection.
    [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(connection_) != 0; }

    [[nodiscard]] bool hasExtension(xcb_extension_t* extension) const {
        return firstEvent(extension).has_value();
    }

    /// The number of an extension's first event; nothing without the extension, and also without
    /// the server: that may go from one line to the next.
    [[nodiscard]] std::optional<std::uint8_t> firstEvent(xcb_extension_t* extension) const;
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;

    /// Waits, for an answer of the server only, until everything sent so far is done.
    void sync() const;

  private:
    X11Connection(xcb_connection_t* connection, xcb_screen_t* screen)
        : connection_(connection), screen_(screen) {}

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

} // namespace quillon
