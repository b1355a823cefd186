#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/Linux/x11/CaughtPresses.h"
#include "Platform/Linux/x11/OwnWindows.h"
#include "Platform/Linux/x11/PostedEvents.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <QSocketNotifier>

#include <deque>
#include <memory>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// Monitors of mouse buttons on an X11 desktop, by raw events of the input extension, which arrive
/// also while another program has grabbed the pointer, as for a menu. They have a connection of
/// their own, and only while there is a monitor.
///
/// A raw event does not say where it goes: that is asked when it arrives, a moment later.
///
/// When the server goes away the monitors fall silent.
class X11EventMonitors final : public EventMonitors {
  public:
    /// All must outlive this object. `postedEvents` knows what this program posts, `caughtPresses`
    /// what it consumes. A handler must not destroy this object.
    X11EventMonitors(const OwnWindows& ownWindows, PostedEvents& postedEvents,
                     CaughtPresses& caughtPresses);
    ~X11EventMonitors() override;

    /// Also null for a mask without any mouse button.
    EventMonitorRef addGlobalMonitor(std::uint64_t mask,
                                     std::function<void(EventType)> handler) override;

  private:
    class Monitor;

    [[nodiscard]] bool connect();
    void disconnect();
    [[nodiscard]] bool mayMonitor() const;
    void selectWanted();
    void readEvents();
    void handleEvent(const xcb_generic_event_t& event);
    void readMapping();
    [[nodiscard]] unsigned mapped(std::uint32_t button) const;
    [[nodiscard]] xcb_window_t windowUnderPointer(xcb_input_device_id_t master) const;
    void report(EventType type, xcb_input_device_id_t device, xcb_timestamp_t time);
    void reportWaiting();
    void tell(EventType type, xcb_input_device_id_t device);
    void forgetRemoved();

    const OwnWindows& ownWindows_;
    PostedEvents& postedEvents_;
    CaughtPresses& caughtPresses_;
    struct Waiting {
        EventType type;
        xcb_input_device_id_t device;
        xcb_timestamp_t time;
    };
    std::deque<Waiting> waiting_;                 // the first is a press that may yet be consumed
    std::vector<xcb_input_device_id_t> consumed_; // devices whose latest left press was
    std::vector<std::weak_ptr<Monitor>> monitors_;
    std::unique_ptr<X11Connection> connection_;
    std::uint32_t selected_ = 0; // types of raw events
    std::vector<std::uint8_t> buttonMap_;
    std::unique_ptr<QSocketNotifier> notifier_;
    QMetaObject::Connection aboutToBlock_;
    bool isReading_ = false;
    std::shared_ptr<X11EventMonitors*> self_; // what monitors hold weakly
};

} // namespace quillon
