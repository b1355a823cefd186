#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/reversal/DirectionSetting.h"
#include "Platform/Linux/reversal/RewriteFight.h"

#include <cstdint>
#include <string>

namespace quillon {

/// One device that scrolls the other way than its user has set, or is to do so.
///
/// What the user has set is remembered in a property of the device, before anything is changed. It
/// lives and dies with the device, and outlives this program: whoever reads it knows what is to be
/// restored.
class DeviceReversal {
  public:
    DeviceReversal(const X11Connection& connection, const DirectionAtoms& atoms,
                   const PointerSlave& device, const DirectionSetting& setting);

    /// Makes it so, wherever the device stands now.
    void settle(bool isToBeReversed, Diagnostics& diagnostics);

    /// An event has come about the device's setting, with this sequence number.
    void changed(std::uint32_t sequence, Diagnostics& diagnostics);

    /// The device is enabled, or not any more. Drivers take no settings for one that is not.
    void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }

    [[nodiscard]] xcb_input_device_id_t id() const { return id_; }
    [[nodiscard]] const DirectionSetting& setting() const { return setting_; }
    [[nodiscard]] bool isReversed() const { return isReversed_; }

    /// A button must go up before its map can be changed.
    [[nodiscard]] bool isBusy() const { return isBusy_; }

    /// It has yet to get back what its user had, which only a later event allows.
    [[nodiscard]] bool isUnsettled() const { return isUnsettled_; }

  private:
    using Value = DirectionSetting::Value;

    void reverse(const Value& user, Diagnostics& diagnostics);
    void restore(const Value& current);
    [[nodiscard]] bool isOurs(const Value& current) const;
    [[nodiscard]] bool remember(const Value& value) const;
    void forget() const;

    const X11Connection* connection_;
    xcb_atom_t before_;
    xcb_input_device_id_t id_;
    std::string name_;
    DirectionSetting setting_;
    RewriteFight fight_;
    bool isEnabled_;
    bool isToBeReversed_ = false;
    bool isReversed_ = false;
    bool isBusy_ = false;
    bool isUnsettled_ = false;
    bool isLeftAlone_ = false;
};

} // namespace quillon
