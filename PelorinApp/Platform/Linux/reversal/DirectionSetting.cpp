#include "Platform/Linux/reversal/DirectionSetting.h"

#include "Platform/Linux/x11/AtomBatch.h"
#include "Platform/Linux/x11/ScrollNotch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

namespace {

constexpr std::uint32_t longest = 256; // numbers; no device has more buttons

template <class Number>
DirectionSetting::Value numbersAfter(const xcb_input_xi_get_property_reply_t& reply) {
    const auto* first = static_cast<const Number*>(static_cast<const void*>(&reply + 1));
    return {first, first + reply.num_items};
}

std::optional<DirectionSetting::Value> numbersOf(const xcb_input_xi_get_property_reply_t* reply) {
    if (reply == nullptr || reply->type != XCB_ATOM_INTEGER) {
        return std::nullopt;
    }
    switch (reply->format) {
    case 8:
        return numbersAfter<std::uint8_t>(*reply);
    case 32:
        return numbersAfter<std::int32_t>(*reply);
    default:
        return std::nullopt;
    }
}

xcb_input_xi_get_property_cookie_t ask(const X11Connection& connection,
                                       xcb_input_device_id_t device, xcb_atom_t property) {
    return xcb_input_xi_get_property(connection.get(), device, 0, property, XCB_ATOM_ANY, 0,
                                     longest);
}

constexpr std::int32_t otherWheelButton(std::int32_t button) { return button ^ 1; }

} // namespace

DirectionAtoms::DirectionAtoms(const X11Connection& connection) {
    const std::array wanted{
        WantedAtom{"libinput Natural Scrolling Enabled", &natural},
        WantedAtom{"Evdev Scrolling Distance", &evdevDistances},
        WantedAtom{"Synaptics Scrolling Distance", &synapticsDistances},
        WantedAtom{"Quillon Scrolling Before", &before},
    };
    internAtoms(connection.get(), wanted);
}

std::optional<DirectionSetting::Value>
deviceNumbers(const X11Connection& connection, xcb_input_device_id_t device, xcb_atom_t property) {
    const XcbOwned<xcb_input_xi_get_property_reply_t> reply(xcb_input_xi_get_property_reply(
        connection.get(), ask(connection, device, property), nullptr));
    return numbersOf(reply.get());
}

std::optional<DirectionSetting> DirectionSetting::of(const X11Connection& connection,
                                                     const DirectionAtoms& atoms,
                                                     const PointerSlave& device) {
    const std::array properties{
        std::pair{atoms.natural, Kind::natural},
        std::pair{atoms.evdevDistances, Kind::distances},
        std::pair{atoms.synapticsDistances, Kind::distances},
    };
    for (const auto& [property, kind] : properties) {
        const auto value = deviceNumbers(connection, device.id, property);
        if (value && !value->empty()) {
            return DirectionSetting(connection, device.id, kind, property);
        }
    }
    if (!device.isPlainWheel) {
        return std::nullopt;
    }
    return DirectionSetting(connection, device.id, Kind::buttons, XCB_ATOM_NONE);
}

std::optional<DirectionSetting::Value> DirectionSetting::read() {
    isOwnEventDue_ = false;
    if (kind_ != Kind::buttons) {
        const auto cookie = ask(*connection_, device_, property_);
        known_ = cookie.sequence;
        const XcbOwned<xcb_input_xi_get_property_reply_t> reply(
            xcb_input_xi_get_property_reply(connection_->get(), cookie, nullptr));
        return numbersOf(reply.get());
    }
    const auto cookie =
        xcb_input_get_device_button_mapping(connection_->get(), static_cast<std::uint8_t>(device_));
    known_ = cookie.sequence;
    const XcbOwned<xcb_input_get_device_button_mapping_reply_t> reply(
        xcb_input_get_device_button_mapping_reply(connection_->get(), cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    const auto* first = xcb_input_get_device_button_mapping_map(reply.get());
    return Value(first, first + xcb_input_get_device_button_mapping_map_length(reply.get()));
}

DirectionSetting::Written DirectionSetting::write(const Value& value) {
    const Written written = kind_ == Kind::buttons ? writeButtons(value) : writeProperty(value);
    isOwnEventDue_ = written == Written::done;
    return written;
}

DirectionSetting::Written DirectionSetting::writeButtons(const Value& value) {
    const std::vector<std::uint8_t> map(value.begin(), value.end());
    const auto cookie =
        xcb_input_set_device_button_mapping(connection_->get(), static_cast<std::uint8_t>(device_),
                                            static_cast<std::uint8_t>(map.size()), map.data());
    known_ = cookie.sequence;
    const XcbOwned<xcb_input_set_device_button_mapping_reply_t> reply(
        xcb_input_set_device_button_mapping_reply(connection_->get(), cookie, nullptr));
    if (!reply) {
        return Written::refused;
    }
    switch (reply->status) {
    case XCB_MAPPING_STATUS_SUCCESS:
        return Written::done;
    case XCB_MAPPING_STATUS_BUSY:
        return Written::busy;
    default:
        return Written::refused;
    }
}

DirectionSetting::Written DirectionSetting::writeProperty(const Value& value) {
    // The library sends whole words, and reads as many.
    constexpr std::size_t word = 4;
    std::vector<std::uint8_t> bytes(value.begin(), value.end());
    bytes.resize((bytes.size() + word - 1) / word * word);
    const bool isFlag = kind_ == Kind::natural;
    const auto cookie = xcb_input_xi_change_property_checked(
        connection_->get(), device_, XCB_PROP_MODE_REPLACE, isFlag ? 8 : 32, property_,
        XCB_ATOM_INTEGER, static_cast<std::uint32_t>(value.size()),
        isFlag ? static_cast<const void*>(bytes.data()) : value.data());
    known_ = cookie.sequence;
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(connection_->get(), cookie));
    return error || connection_->isBroken() ? Written::refused : Written::done;
}

/// The server numbers an event after the request of ours that it has seen last. So one that is
/// numbered before the latest request is older than that, and the first with a write's own number
/// tells of that write.
bool DirectionSetting::isNews(std::uint32_t sequence) {
    const auto after = static_cast<std::int32_t>(sequence - known_);
    return after >= 0 && !(after == 0 && std::exchange(isOwnEventDue_, false));
}

DirectionSetting::Value DirectionSetting::reversed(Value value) const {
    constexpr std::size_t mostDistances = 2; // vertical and horizontal; the third is a dial's
    switch (kind_) {
    case Kind::natural:
        value[0] = value[0] == 0 ? 1 : 0;
        break;
    case Kind::distances:
        for (std::size_t i = 0; i < std::min(value.size(), mostDistances); ++i) {
            value[i] = -value[i];
        }
        break;
    case Kind::buttons:
        for (auto& button : value) {
            button = isWheelButton(static_cast<std::uint32_t>(button)) ? otherWheelButton(button)
                                                                       : button;
        }
        break;
    }
    return value;
}

bool DirectionSetting::scrollAlike(const Value& one, const Value& other) const {
    if (kind_ != Kind::buttons) {
        return one == other;
    }
    const auto isAlike = [](std::int32_t a, std::int32_t b) {
        return a == b || (!isWheelButton(static_cast<std::uint32_t>(a)) &&
                          !isWheelButton(static_cast<std::uint32_t>(b)));
    };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), isAlike);
}

} // namespace quillon
