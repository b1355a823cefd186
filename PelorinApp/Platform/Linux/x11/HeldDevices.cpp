#include "Platform/Linux/x11/HeldDevices.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>

namespace quillon {

namespace {

/// Calls `visit(axis, value)` for each axis that the event speaks of. The values are those that
/// the server would move the pointer by: accelerated.
template <class Visit>
void forEachAxis(const xcb_input_raw_motion_event_t& event, const Visit& visit) {
    const std::span mask(xcb_input_raw_button_press_valuator_mask(&event), event.valuators_len);
    const auto* value = xcb_input_raw_button_press_axisvalues(&event);
    for (std::size_t axis = 0; axis < mask.size() * 32; ++axis) {
        if ((mask[axis / 32] >> (axis % 32) & 1U) != 0) {
            visit(axis, toDouble(*value++));
        }
    }
}

double toPixels(xcb_input_fp1616_t coordinate) { return coordinate / 65536.0; }

} // namespace

void HeldDevices::follow(const PointerDevices& now) {
    // One that was disabled keeps its grab and would come back with it. One that somebody attached
    // to the pointer moves it in spite of the grab, and must be taken anew.
    const auto isLost = [&](const Held& held) {
        const bool stays =
            std::any_of(now.scrolling.begin(), now.scrolling.end(), [&](const auto& device) {
                return device.id == held.device.id && !device.isAttached;
            });
        if (!stays) {
            ungrab(held);
        }
        return !stays;
    };
    if (std::erase_if(held_, isLost) != 0) {
        poster_.releaseAll(); // what was down on it will never be released by it
    }
    for (const ScrollDevice& device : now.scrolling) {
        if (Held* held = find(device.id); held != nullptr) {
            held->device = device;
        }
    }
}

bool HeldDevices::take(const PointerDevices& pointers, xcb_input_device_id_t mover) {
    if (held_.empty()) {
        lastActive_ = mover;
        poster_.useDevice(pointers);
    }
    bool tookAll = true;
    bool tookSome = false;
    for (const ScrollDevice& device : pointers.scrolling) {
        if (find(device.id) != nullptr) {
            continue;
        }
        switch (grab(device)) {
        case Grab::taken:
            held_.push_back({device, {}, {}});
            tookSome = true;
            break;
        case Grab::heldByOther:
            tookAll = false;
            break;
        case Grab::deviceGone:
            break;
        }
    }
    if (tookSome) {
        poster_.takePointer();
    }
    return tookAll;
}

HeldDevices::Grab HeldDevices::grab(const ScrollDevice& device) const {
    // Raw motion is what the device did. The motion event beside it says where a pointer of this
    // device alone would be, which is of use only for devices that know where they are.
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                         XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE;
    if (device.isAbsolute) {
        mask |= XCB_INPUT_XI_EVENT_MASK_MOTION;
    }
    const XcbOwned<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(
        connection_.get(),
        xcb_input_xi_grab_device(connection_.get(), connection_.root(), XCB_CURRENT_TIME, XCB_NONE,
                                 device.id, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                 XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1, &mask),
        nullptr));
    if (!reply) {
        return Grab::deviceGone;
    }
    return reply->status == XCB_GRAB_STATUS_SUCCESS ? Grab::taken : Grab::heldByOther;
}

void HeldDevices::ungrab(const Held& held) const {
    xcb_input_xi_ungrab_device(connection_.get(), XCB_CURRENT_TIME, held.device.id);
}

void HeldDevices::release() {
    for (const Held& held : held_) {
        ungrab(held);
    }
    isReleasing_ = true;
    connection_.sync();
}

void HeldDevices::finishRelease() {
    poster_.releaseAll();
    if (const Held* held = find(std::exchange(lastActive_, 0)); held != nullptr) {
        poster_.handBack(held->device);
    }
    xcb_flush(connection_.get());
    held_.clear();
    isReleasing_ = false;
}

std::vector<xcb_input_device_id_t> HeldDevices::ids() const {
    std::vector<xcb_input_device_id_t> ids;
    for (const Held& held : held_) {
        ids.push_back(held.device.id);
    }
    return ids;
}

HeldDevices::Held* HeldDevices::find(xcb_input_device_id_t device) {
    const auto found = std::find_if(held_.begin(), held_.end(), [device](const Held& held) {
        return held.device.id == device;
    });
    return found == held_.end() ? nullptr : &*found;
}

bool HeldDevices::areAllHeld(const PointerDevices& pointers) const {
    const auto isHeld = [this](const ScrollDevice& device) {
        return std::any_of(held_.begin(), held_.end(),
                           [&](const Held& held) { return held.device.id == device.id; });
    };
    return !isReleasing_ &&
           std::all_of(pointers.scrolling.begin(), pointers.scrolling.end(), isHeld);
}

void HeldDevices::handle(const xcb_ge_generic_event_t& event) {
    // All events of the extension that come here begin alike.
    Held* held = find(reinterpret_cast<const xcb_input_button_press_event_t&>(event).deviceid);
    if (held == nullptr) {
        return;
    }
    lastActive_ = held->device.id;
    switch (event.event_type) {
    case XCB_INPUT_RAW_MOTION:
        moved(*held, reinterpret_cast<const xcb_input_raw_motion_event_t&>(event));
        break;
    case XCB_INPUT_MOTION:
        movedTo(*held, reinterpret_cast<const xcb_input_motion_event_t&>(event));
        break;
    case XCB_INPUT_BUTTON_PRESS:
    case XCB_INPUT_BUTTON_RELEASE:
        buttonChanged(reinterpret_cast<const xcb_input_button_press_event_t&>(event),
                      event.event_type == XCB_INPUT_BUTTON_PRESS);
        break;
    default:
        break;
    }
}

void HeldDevices::moved(Held& held, const xcb_input_raw_motion_event_t& event) {
    const ScrollDevice& device = held.device;
    double dx = 0;
    double dy = 0;
    int down = 0;
    int right = 0;
    forEachAxis(event, [&](std::size_t axis, double value) {
        if (device.vertical && axis == device.vertical->number) {
            down = held.vertical.add(value / device.vertical->increment);
        } else if (device.horizontal && axis == device.horizontal->number) {
            right = held.horizontal.add(value / device.horizontal->increment);
        } else if (axis == 0) {
            dx = value;
        } else if (axis == 1) {
            dy = value;
        }
    });
    if (!device.isAbsolute) {
        poster_.moveBy(dx, dy);
    }
    scrolled(held, ScrollNotch::Axis::vertical, -down);
    scrolled(held, ScrollNotch::Axis::horizontal, right);
}

void HeldDevices::movedTo(const Held& held, const xcb_input_motion_event_t& event) {
    constexpr std::uint32_t position = 0b11; // the axes 0 and 1
    const auto* mask = xcb_input_button_press_valuator_mask(&event);
    if (held.device.isAbsolute && event.valuators_len > 0 && (mask[0] & position) != 0) {
        poster_.moveTo(toPixels(event.root_x), toPixels(event.root_y));
    }
}

void HeldDevices::buttonChanged(const xcb_input_button_press_event_t& event, bool pressed) {
    if ((event.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED) != 0) {
        return; // an axis has moved, which was dealt with
    }
    if (isWheelButton(event.detail)) {
        if (pressed) {
            onNotch_(notchOfButton(static_cast<std::uint8_t>(event.detail), {}));
        }
    } else if (pressed) {
        poster_.press(event.detail);
    } else {
        poster_.release(event.detail);
    }
}

void HeldDevices::scrolled(const Held& held, ScrollNotch::Axis axis, int notches) {
    ScrollNotch notch;
    notch.axis = axis;
    notch.direction = notches > 0 ? 1 : -1;
    notch.continuous = held.device.isTouchpad;
    notch.isReversed = reversed_.contains(held.device.id);
    for (int i = std::abs(notches); i > 0; --i) {
        onNotch_(notch);
    }
}

} // namespace quillon
