#include "Platform/Linux/x11/PointerDevices.h"

#include "Platform/Linux/x11/ScrollNotch.h"

#include <algorithm>

namespace quillon {

namespace {

/// The devices that their drivers call touchpads.
std::vector<xcb_input_device_id_t> touchpads(const X11Connection& connection) {
    const auto touchpad = connection.atom("TOUCHPAD");
    const XcbOwned<xcb_input_list_input_devices_reply_t> reply(xcb_input_list_input_devices_reply(
        connection.get(), xcb_input_list_input_devices(connection.get()), nullptr));
    std::vector<xcb_input_device_id_t> found;
    if (reply) {
        const std::span devices(
            xcb_input_list_input_devices_devices(reply.get()),
            static_cast<std::size_t>(xcb_input_list_input_devices_devices_length(reply.get())));
        for (const auto& device : devices) {
            if (device.device_type == touchpad) {
                found.push_back(device.device_id);
            }
        }
    }
    return found;
}

/// The property's bytes; empty when the device has none of that name.
std::vector<std::uint8_t> bytes(const X11Connection& connection, xcb_input_device_id_t device,
                                xcb_atom_t property) {
    const XcbOwned<xcb_input_xi_get_property_reply_t> reply(xcb_input_xi_get_property_reply(
        connection.get(),
        xcb_input_xi_get_property(connection.get(), device, 0, property, XCB_ATOM_ANY, 0, 1),
        nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto* first = static_cast<const std::uint8_t*>(static_cast<const void*>(&reply.get()[1]));
    return {first, first + reply->num_items};
}

/// Of the ways to scroll that libinput offers for it: two fingers, or one along the edge.
bool scrollsByFingers(const X11Connection& connection, xcb_input_device_id_t device,
                      xcb_atom_t scrollMethods) {
    const auto methods = bytes(connection, device, scrollMethods);
    return methods.size() >= 2 && (methods[0] != 0 || methods[1] != 0);
}

/// Calls `visit(class)` for each class of the device.
template <class Visit>
void forEachClass(const xcb_input_xi_device_info_t& info, const Visit& visit) {
    auto classes = xcb_input_xi_device_info_classes_iterator(&info);
    for (; classes.rem > 0; xcb_input_device_class_next(&classes)) {
        visit(*classes.data);
    }
}

/// Calls `visit(info)` for each device of those that are asked for.
template <class Visit>
void forEachDevice(const X11Connection& connection, xcb_input_device_id_t which,
                   const Visit& visit) {
    const XcbOwned<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection.get(), xcb_input_xi_query_device(connection.get(), which), nullptr));
    if (!devices) {
        return;
    }
    auto infos = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
        visit(*infos.data);
    }
}

ScrollDevice readClasses(const xcb_input_xi_device_info_t& info) {
    ScrollDevice device;
    device.id = info.deviceid;
    forEachClass(info, [&](const xcb_input_device_class_t& each) {
        if (each.type == XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL) {
            const auto& scroll = reinterpret_cast<const xcb_input_scroll_class_t&>(each);
            const ScrollAxis axis{scroll.number, toDouble(scroll.increment)};
            if (axis.increment != 0) {
                (scroll.scroll_type == XCB_INPUT_SCROLL_TYPE_VERTICAL ? device.vertical
                                                                      : device.horizontal) = axis;
            }
        } else if (each.type == XCB_INPUT_DEVICE_CLASS_TYPE_VALUATOR) {
            const auto& axis = reinterpret_cast<const xcb_input_valuator_class_t&>(each);
            if (axis.number == 0) {
                device.isAbsolute = axis.mode == XCB_INPUT_VALUATOR_MODE_ABSOLUTE;
            }
        }
    });
    return device;
}

/// Which devices are touchpads, by what their drivers say.
class Touchpads {
  public:
    explicit Touchpads(const X11Connection& connection)
        : connection_(connection),
          scrollMethods_(connection.atom("libinput Scroll Methods Available")),
          called_(touchpads(connection)) {}

    [[nodiscard]] bool contains(xcb_input_device_id_t device) const {
        return std::find(called_.begin(), called_.end(), device) != called_.end() ||
               scrollsByFingers(connection_, device, scrollMethods_);
    }

  private:
    const X11Connection& connection_;
    xcb_atom_t scrollMethods_;
    std::vector<xcb_input_device_id_t> called_;
};

} // namespace

PointerDevices queryPointerDevices(const X11Connection& connection,
                                   std::span<const xcb_input_device_id_t> held) {
    PointerDevices found;
    const XcbOwned<xcb_input_xi_get_client_pointer_reply_t> master(
        xcb_input_xi_get_client_pointer_reply(
            connection.get(), xcb_input_xi_get_client_pointer(connection.get(), XCB_NONE),
            nullptr));
    if (!master) {
        return found;
    }
    found.master = master->deviceid;
    const auto injectedMark = connection.atom("XTEST Device");
    const Touchpads pads(connection);
    forEachDevice(connection, XCB_INPUT_DEVICE_ALL, [&](const xcb_input_xi_device_info_t& info) {
        const bool isOurs = std::find(held.begin(), held.end(), info.deviceid) != held.end();
        const bool movesPointer =
            info.type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER && info.attachment == found.master;
        if (info.enabled == 0 || !(movesPointer || isOurs)) {
            return;
        }
        ScrollDevice device = readClasses(info);
        if (device.vertical || device.horizontal) {
            device.isTouchpad = pads.contains(device.id);
            device.isAttached = movesPointer;
            found.scrolling.push_back(device);
        } else if (!bytes(connection, device.id, injectedMark).empty()) {
            found.injected = device.id;
        }
    });
    return found;
}

std::vector<PointerSlave> queryPointerSlaves(const X11Connection& connection) {
    std::vector<PointerSlave> found;
    const Touchpads pads(connection);
    forEachDevice(connection, XCB_INPUT_DEVICE_ALL, [&](const xcb_input_xi_device_info_t& info) {
        constexpr std::uint16_t fewestWithWheel = wheelButtons[1];
        PointerSlave slave;
        std::uint16_t buttons = 0;
        forEachClass(info, [&](const xcb_input_device_class_t& each) {
            if (each.type == XCB_INPUT_DEVICE_CLASS_TYPE_BUTTON) {
                buttons = reinterpret_cast<const xcb_input_button_class_t&>(each).num_buttons;
            }
        });
        const bool isPointer = info.type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER ||
                               info.type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE;
        if (!isPointer || buttons == 0) {
            return;
        }
        const ScrollDevice device = readClasses(info);
        slave.id = info.deviceid;
        slave.name.assign(xcb_input_xi_device_info_name(&info), info.name_len);
        slave.isEnabled = info.enabled != 0;
        slave.hasAxes = device.vertical || device.horizontal;
        slave.isPlainWheel = !slave.hasAxes && buttons >= fewestWithWheel;
        slave.isTouchpad = pads.contains(slave.id);
        found.push_back(std::move(slave));
    });
    return found;
}

xcb_input_device_id_t lastPressed(const X11Connection& connection, xcb_input_device_id_t master) {
    xcb_input_device_id_t source = 0;
    forEachDevice(connection, master, [&](const xcb_input_xi_device_info_t& info) {
        forEachClass(info, [&](const xcb_input_device_class_t& each) {
            if (each.type == XCB_INPUT_DEVICE_CLASS_TYPE_BUTTON) {
                source = each.sourceid;
            }
        });
    });
    return source;
}

} // namespace quillon
