#pragma once

#include "Platform/Linux/x11/ButtonNumbers.h"
#include "Platform/Linux/x11/PointerTarget.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>

#include <xcb/xinput.h>

namespace quillon {

/// A button of a device goes down or up; a notch of any wheel or touchpad does both at once.
struct RawButton {
    std::uint32_t physical = 0; // the device's own number
    unsigned number = 0;        // the applications'; 0 when it is switched off
    bool isDown = false;
    bool isOfAxis = false; // made by the server, of a movement of a scroll axis
    xcb_input_device_id_t source = 0;
    xcb_input_device_id_t master = 0;
    xcb_timestamp_t time = 0;
};

/// Raw events of the buttons of all devices, on a connection of its own. They arrive also while
/// another program has grabbed the pointer, as for a menu, but not while somebody has grabbed the
/// device. Main thread only.
class RawButtons : public std::enable_shared_from_this<RawButtons> {
  public:
    struct Listener {
        std::function<void(const RawButton&)> button;
        std::function<void()> lost; // once, from the event loop: the server has hung up
    };

    /// Null when there is no server, or it shows no raw events to us. Nothing is selected yet.
    static std::shared_ptr<RawButtons> open(Listener listener);

    RawButtons(const RawButtons&) = delete;
    RawButtons& operator=(const RawButtons&) = delete;
    ~RawButtons();

    /// The listener is not called any more. It may be what calls this.
    void close();

    /// From now on these arrive, and no others: each one wakes the program.
    void select(bool presses, bool releases);
    [[nodiscard]] bool arePressesSelected() const { return arePressesSelected_; }
    [[nodiscard]] bool areReleasesSelected() const { return areReleasesSelected_; }

    /// Whether the server has closed the connection, though the listener may not know yet.
    [[nodiscard]] bool isLost() const;

    /// To be asked about an event when it arrives: it does not say itself where it goes.
    [[nodiscard]] PointerTarget& target() { return target_; }

  private:
    RawButtons(std::unique_ptr<X11Connection> connection, Listener listener);

    [[nodiscard]] bool mayListen() const;
    void listen();
    void readEvents(xcb_generic_event_t* (*next)(xcb_connection_t*));
    void handleEvent(const xcb_generic_event_t& event);

    std::unique_ptr<X11Connection> connection_;
    Listener listener_;
    ButtonNumbers numbers_;
    PointerTarget target_;
    bool arePressesSelected_ = false;
    bool areReleasesSelected_ = false;
    std::unique_ptr<QSocketNotifier> notifier_;
    QMetaObject::Connection aboutToBlock_;
    bool isReading_ = false;
    bool isClosed_ = false;
};

} // namespace quillon
