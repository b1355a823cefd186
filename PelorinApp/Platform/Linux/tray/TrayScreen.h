#pragma once

#include "Platform/Linux/tray/TrayAtoms.h"
#include "Platform/Linux/tray/TrayContext.h"
#include "Platform/Linux/x11/X11Connection.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/RunLoop.h"

#include <QPoint>
#include <QSocketNotifier>

#include <deque>
#include <memory>
#include <optional>

namespace quillon {

class TrayScreenListener {
  public:
    virtual ~TrayScreenListener() = default;

    /// An event of the connection. May destroy the screen.
    virtual void handleEvent(const xcb_generic_event_t& event) = 0;

    /// There is a new connection, or none any more.
    virtual void connectionChanged() = 0;

    /// Pixels map to points otherwise than before.
    virtual void geometryChanged() = 0;
};

/// The status item's own connection to the X server: on the main thread, so that its windows need
/// no toolkit. A connection that fails is made anew, unless the server lets nobody in.
class TrayScreen {
  public:
    /// Tells the listener nothing before it returns.
    TrayScreen(const TrayContext& context, TrayScreenListener& listener);
    TrayScreen(const TrayScreen&) = delete;
    TrayScreen& operator=(const TrayScreen&) = delete;
    ~TrayScreen();

    [[nodiscard]] bool isConnected() const { return connection_ != nullptr; }

    // Only while it is connected.
    [[nodiscard]] const X11Connection& connection() const { return *connection_; }
    [[nodiscard]] const TrayAtoms& atoms() const { return *atoms_; }
    [[nodiscard]] double scale() const { return geometry_->pixelsPerPoint(); }
    [[nodiscard]] Rect toPoints(const PixelRect& pixels) const;

    [[nodiscard]] Rect mainScreen() const { return geometry_->frames().front(); }

    /// In pixels of the root window; nothing while there is no server.
    [[nodiscard]] std::optional<QPoint> pointer() const;

  private:
    void connect();
    void readEvents();
    void keepQueuedEvents();
    [[nodiscard]] XcbOwned<xcb_generic_event_t> nextEvent();
    void handle(const xcb_generic_event_t& event);
    void lose();
    void stopReading();

    const TrayContext& context_;
    TrayScreenListener& listener_;
    std::unique_ptr<X11Connection> connection_;
    ResourceRange ids_;
    std::unique_ptr<TrayAtoms> atoms_;
    std::unique_ptr<X11Displays> displays_;
    X11Displays::GeometryRef geometry_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::deque<XcbOwned<xcb_generic_event_t>> kept_;
    bool isReading_ = false;
    TimerRef reconnecting_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quillon
