#include "Platform/Linux/reversal/DeviceReversal.h"

#include <utility>

namespace quillon {

DeviceReversal::DeviceReversal(const X11Connection& connection, const DirectionAtoms& atoms,
                               const PointerSlave& device, const DirectionSetting& setting)
    : connection_(&connection), before_(atoms.before), id_(device.id), name_(device.name),
      setting_(setting), isEnabled_(device.isEnabled) {}

void DeviceReversal::settle(bool isToBeReversed, Diagnostics& diagnostics) {
    if (std::exchange(isToBeReversed_, isToBeReversed) && !isToBeReversed) {
        isLeftAlone_ = false; // the next time is another try
    }
    isUnsettled_ = false;
    isBusy_ = false;
    if (isLeftAlone_) {
        return;
    }
    const auto current = setting_.read();
    if (!current || current->empty()) {
        isReversed_ = false;
        return; // the device is gone
    }
    isReversed_ = isOurs(*current);
    if (isToBeReversed_ && !isReversed_) {
        reverse(*current, diagnostics);
    } else if (!isToBeReversed_) {
        restore(*current);
    }
}

void DeviceReversal::reverse(const Value& user, Diagnostics& diagnostics) {
    if (!isEnabled_ && !setting_.isButtonMap()) {
        return;
    }
    auto written = DirectionSetting::Written::refused;
    if (remember(user)) {
        written = setting_.write(setting_.reversed(user));
    }
    isReversed_ = written == DirectionSetting::Written::done;
    isBusy_ = written == DirectionSetting::Written::busy;
    if (written == DirectionSetting::Written::refused && !connection_->isBroken()) {
        forget();
        isLeftAlone_ = true;
        diagnostics.line("⚠️ The scroll direction of " + name_ +
                         " cannot be changed; it stays as it is");
    }
}

/// Where the program ended between remembering and changing, or somebody has changed it since,
/// there is nothing to restore.
void DeviceReversal::restore(const Value& current) {
    if (isReversed_) {
        const auto written = setting_.write(setting_.reversed(current));
        isReversed_ = written != DirectionSetting::Written::done;
        isBusy_ = written == DirectionSetting::Written::busy;
        isUnsettled_ = isReversed_;
    }
    if (!isReversed_) {
        forget();
    }
}

void DeviceReversal::changed(std::uint32_t sequence, Diagnostics& diagnostics) {
    if (!setting_.isNews(sequence) || !isToBeReversed_ || isLeftAlone_) {
        return;
    }
    const auto current = setting_.read();
    if (!current || current->empty()) {
        isReversed_ = false;
        return;
    }
    if (setting_.isButtonMap() && isOurs(*current)) {
        // Of a map, people change what they want changed: here, the other buttons.
        isReversed_ = remember(setting_.reversed(*current));
        return;
    }
    if (isReversed_ && fight_.rewritten(RewriteFight::Clock::now())) {
        isLeftAlone_ = true;
        isReversed_ = false;
        forget();
        diagnostics.line("⚠️ Another program keeps setting the scroll direction of " + name_ +
                         "; it is left alone");
        return;
    }
    reverse(*current, diagnostics);
}

/// Whether this program has set it, in this life or in one before.
bool DeviceReversal::isOurs(const Value& current) const {
    const auto before = deviceNumbers(*connection_, id_, before_);
    return before && before->size() == current.size() &&
           setting_.scrollAlike(current, setting_.reversed(*before)) &&
           !setting_.scrollAlike(current, *before);
}

bool DeviceReversal::remember(const Value& value) const {
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(
        connection_->get(),
        xcb_input_xi_change_property_checked(
            connection_->get(), id_, XCB_PROP_MODE_REPLACE, 32, before_, XCB_ATOM_INTEGER,
            static_cast<std::uint32_t>(value.size()), value.data())));
    return !error && !connection_->isBroken();
}

void DeviceReversal::forget() const {
    xcb_input_xi_delete_property(connection_->get(), id_, before_);
}

} // namespace quillon
