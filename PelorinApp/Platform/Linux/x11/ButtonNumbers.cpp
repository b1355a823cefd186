#include "Platform/Linux/x11/ButtonNumbers.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

unsigned mapped(std::uint32_t button, const ButtonMap& map) {
    return button >= 1 && button <= map.size() ? map[button - 1] : button;
}

} // namespace

void ButtonNumbers::follow() {
    const auto firstEvent = connection_.firstEvent(&xcb_input_id);
    if (!firstEvent) {
        return;
    }
    mappingNotify_ = *firstEvent + XCB_INPUT_DEVICE_MAPPING_NOTIFY;
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL, 1};
        std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
    } selection;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.head);
    followDevices();
}

/// Of each device apart: only the extension's first version tells of this, and it knows no "all".
void ButtonNumbers::followDevices() {
    maps_.clear();
    const XcbOwned<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection_.get(), xcb_input_xi_query_device(connection_.get(), XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!devices) {
        return;
    }
    auto infos = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
        if (infos.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD ||
            infos.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD) {
            continue;
        }
        const xcb_input_event_class_t wanted =
            std::uint32_t{infos.data->deviceid} << 8 | mappingNotify_;
        // One by one: should a device go meanwhile, its request alone is refused.
        xcb_input_select_extension_event(connection_.get(), connection_.root(), 1, &wanted);
    }
    xcb_flush(connection_.get());
}

void ButtonNumbers::handle(const xcb_generic_event_t& event) {
    if (event.response_type == XCB_MAPPING_NOTIFY || event.response_type == mappingNotify_) {
        maps_.clear();
    } else if (event.response_type == XCB_GE_GENERIC &&
               reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type ==
                   XCB_INPUT_HIERARCHY) {
        maps_.clear();
        haveDevicesChanged_ = true;
    }
}

unsigned ButtonNumbers::numberOf(std::uint32_t button, xcb_input_device_id_t source,
                                 xcb_input_device_id_t master) {
    if (std::exchange(haveDevicesChanged_, false)) {
        followDevices();
    }
    const unsigned ofSource = mapped(button, mapOf(source));
    return mapped(ofSource, mapOf(master));
}

/// Until the next one is asked for.
const ButtonMap& ButtonNumbers::mapOf(xcb_input_device_id_t device) {
    const auto known = std::find_if(maps_.begin(), maps_.end(), [device](const Numbered& each) {
        return each.device == device;
    });
    if (known != maps_.end()) {
        return known->map;
    }
    maps_.push_back({device, buttonMap(connection_, device)});
    return maps_.back().map;
}

} // namespace quillon
