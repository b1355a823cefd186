#pragma once

#include "Platform/Linux/tray/TrayAtoms.h"
#include "Platform/Linux/x11/ScreenGeometry.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <QImage>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quillon {

/// A panel with a tray, on a connection of its own: it takes in one window and gives it a place.
class FakeTray {
  public:
    struct Settings {
        PixelRect panel{0, 0, 1280, 28};
        PixelRect item{1200, 3, 22, 22}; // within the panel
        std::uint32_t ground = 0x202020;
        bool hasAlpha = false;
        std::uint32_t orientation = 0;
        std::vector<std::uint32_t> colors;
    };

    explicit FakeTray(const Settings& settings);
    FakeTray() : FakeTray(Settings{}) {}

    /// Puts the item, if there is one, on the desktop, and goes.
    ~FakeTray();
    FakeTray(const FakeTray&) = delete;
    FakeTray& operator=(const FakeTray&) = delete;

    /// Looks at what has been asked of it. Whether it has an item by now.
    bool hasItem();

    /// Waits for the request to be docked, and docks.
    void dockItem();

    /// Wants the item no more, but stays.
    void throwOut(bool destroyed) const;

    /// Is no tray any more, but a panel still.
    void giveUp() const;

    void moveItem(const PixelRect& place);
    void setGround(std::uint32_t ground) const;
    void setColors(const std::vector<std::uint32_t>& colors);

    [[nodiscard]] xcb_window_t item() const { return item_; }

    /// How many windows it has taken in so far. (Their ids may be used again.)
    [[nodiscard]] int taken() const { return taken_; }
    [[nodiscard]] const X11Connection& connection() const { return *connection_; }
    [[nodiscard]] const TrayAtoms& atoms() const { return atoms_; }

    /// What the item's window holds, with its alpha if it has one.
    [[nodiscard]] QImage itemPixels() const;

    [[nodiscard]] bool exists(xcb_window_t window) const;

  private:
    void handle(const xcb_generic_event_t& event);

    std::unique_ptr<X11Connection> connection_ = X11Connection::open();
    TrayAtoms atoms_{*connection_};
    Settings settings_;
    xcb_window_t panel_;
    xcb_window_t owner_;
    xcb_window_t item_ = XCB_NONE;
    int taken_ = 0;
};

/// A visual of this screen with 32 bits to the pixel, alpha among them.
[[nodiscard]] xcb_visualid_t alphaVisual(const xcb_screen_t& screen);

} // namespace quillon
