#pragma once

#include "Platform/Linux/x11/PointerDevices.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// Names of the properties that have to do with the direction in which a device scrolls.
struct DirectionAtoms {
    explicit DirectionAtoms(const X11Connection& connection);

    xcb_atom_t natural = 0;            // of libinput: 1 is the other way than of old
    xcb_atom_t evdevDistances = 0;     // how far a notch is; below 0 is the other way
    xcb_atom_t synapticsDistances = 0; // the same
    xcb_atom_t before = 0;             // ours: the value that the user had
};

/// Where a device is told in which direction to scroll: a property of its driver or, for a wheel
/// that is plain buttons, the numbers that its buttons count as.
///
/// Main thread. Each call waits for the X server.
class DirectionSetting {
  public:
    using Value = std::vector<std::int32_t>;
    enum class Written {
        done,
        busy, // a button that is to be another one is down
        refused,
    };

    /// None where the driver offers no such setting.
    static std::optional<DirectionSetting>
    of(const X11Connection& connection, const DirectionAtoms& atoms, const PointerSlave& device);

    [[nodiscard]] bool isButtonMap() const { return property_ == XCB_ATOM_NONE; }

    /// None for a button map.
    [[nodiscard]] xcb_atom_t property() const { return property_; }

    /// None when the device is gone.
    [[nodiscard]] std::optional<Value> read();
    [[nodiscard]] Written write(const Value& value);

    /// Whether an event about this setting, with this sequence number, tells of a change by
    /// somebody else that no read() has seen. To be asked once for each event, in order.
    [[nodiscard]] bool isNews(std::uint32_t sequence);

    /// The same for the other direction.
    [[nodiscard]] Value reversed(Value value) const;

    /// Whether both scroll in the same direction where that is told apart from all else: a left
    /// hand's button map may be as reversed as a right hand's.
    [[nodiscard]] bool scrollAlike(const Value& one, const Value& other) const;

  private:
    enum class Kind { natural, distances, buttons };

    DirectionSetting(const X11Connection& connection, xcb_input_device_id_t device, Kind kind,
                     xcb_atom_t property)
        : connection_(&connection), device_(device), kind_(kind), property_(property) {}

    [[nodiscard]] Written writeButtons(const Value& value);
    [[nodiscard]] Written writeProperty(const Value& value);

    const X11Connection* connection_;
    xcb_input_device_id_t device_;
    Kind kind_;
    xcb_atom_t property_;
    std::uint32_t known_ = 0;    // sequence number of the latest read or write
    bool isOwnEventDue_ = false; // it was a write, and its event is yet to come
};

/// The whole numbers of a device's property; nothing where there is none.
[[nodiscard]] std::optional<DirectionSetting::Value>
deviceNumbers(const X11Connection& connection, xcb_input_device_id_t device, xcb_atom_t property);

} // namespace quillon
