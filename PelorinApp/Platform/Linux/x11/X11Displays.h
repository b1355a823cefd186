#pragma once

#include "Platform/Displays.h"
#include "Platform/Linux/x11/ScreenGeometry.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <functional>
#include <memory>
#include <optional>

namespace quillon {

/// Screens and pointer of an X11 desktop. Without a server there is no screen, and so no place
/// that is on one.
class X11Displays final : public Displays {
  public:
    using GeometryRef = std::shared_ptr<const ScreenGeometry>;

    [[nodiscard]] Point mouseLocation() const override;
    [[nodiscard]] std::span<const Rect> screens() const override;

    /// How pixels map to points now; null without a server.
    [[nodiscard]] GeometryRef geometry() const { return geometry_; }

    /// Called with each new geometry, the present one first.
    void setGeometryHandler(std::function<void(const GeometryRef&)> handler);

    /// Begins to follow the screens of this server. The connection must outlive this object.
    void follow(X11Connection& connection);

    /// Looks at an event of that connection.
    void handleEvent(const xcb_generic_event_t& event);

    /// While it exists, the pointer is where it was when the event happened.
    class EventScope {
      public:
        EventScope(X11Displays& displays, Point location) : displays_(displays) {
            displays_.eventLocation_ = location;
        }
        EventScope(const EventScope&) = delete;
        EventScope& operator=(const EventScope&) = delete;
        ~EventScope() { displays_.eventLocation_.reset(); }

      private:
        X11Displays& displays_;
    };

  private:
    void readGeometry();

    X11Connection* connection_ = nullptr;
    xcb_atom_t resourceManager_ = XCB_ATOM_NONE;
    GeometryRef geometry_;
    std::function<void(const GeometryRef&)> geometryHandler_;
    std::optional<Point> eventLocation_;
};

} // namespace quillon
