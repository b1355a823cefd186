#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/EventServices.h"
#include "Platform/Linux/reversal/DeviceReversal.h"
#include "Platform/Linux/reversal/ReversedDevices.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <QSocketNotifier>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillon {

/// Lets devices scroll the other way by themselves: nothing is held for it, and no event of theirs
/// comes here.
///
/// Main thread. It has a connection of its own, and only while there is something to do: it hears
/// of devices that come, and of other programs that change what it has set. What they set is taken
/// for what the user wants to have reversed; but a program that insists has its will.
class ScrollReversal {
  public:
    /// All must outlive this object. `reversed` is told what is reversed.
    ScrollReversal(Diagnostics& diagnostics, ReversedDevices& reversed)
        : diagnostics_(diagnostics), reversed_(reversed) {}
    ScrollReversal(const ScrollReversal&) = delete;
    ScrollReversal& operator=(const ScrollReversal&) = delete;

    /// Gives the devices back what their users had.
    ~ScrollReversal();

    /// `wanted.reversesLines` is for mice, `reversesContinuous` for touchpads. The first call also
    /// restores what a life of this program that ended by force has left behind. Tries again what
    /// failed before; waits for the X server.
    void follow(ConstantRewrite wanted);

  private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isAnythingWanted() const { return wanted_ != ConstantRewrite{}; }
    [[nodiscard]] bool isToBeReversed(const PointerSlave& device) const;
    [[nodiscard]] bool isAnythingLeft() const;
    [[nodiscard]] bool connect();
    void listen();
    void listenToMap(xcb_input_device_id_t device) const;
    void listenToReleases(xcb_input_device_id_t device, bool listens) const;
    void disconnect();
    void connectionLost();
    void settleDevices();
    [[nodiscard]] DeviceReversal* reversalOf(const PointerSlave& device);
    void settleDevice(const PointerSlave& device);
    void sayUnchangeable(const PointerSlave& device);
    void publish();
    void settle();
    void readEvents();
    void handleEvent(const xcb_generic_event_t& event);
    void devicesChanged(const xcb_input_hierarchy_event_t& event);
    void settingChanged(xcb_input_device_id_t device, xcb_atom_t property, std::uint32_t sequence);
    void released(xcb_input_device_id_t device);

    Diagnostics& diagnostics_;
    ReversedDevices& reversed_;
    std::optional<ConstantRewrite> asked_; // what follow() was called with last
    ConstantRewrite wanted_;
    std::unique_ptr<X11Connection> connection_;
    Clock::time_point connectedAt_;
    std::optional<DirectionAtoms> atoms_;
    std::uint8_t mappingEvent_ = 0;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unordered_map<xcb_input_device_id_t, DeviceReversal> devices_;
    std::vector<PointerSlave> slaves_;
    std::vector<std::string> unchangeable_; // names that were said
    bool haveDevicesChanged_ = false;
    bool isReading_ = false;
};

} // namespace quillon
