// The part of it that hears of devices and of what others do to them.
#include "Platform/Linux/reversal/ScrollReversal.h"

#include <utility>

namespace quillon {

namespace {

void select(const X11Connection& connection, xcb_input_device_id_t device, std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head{0, 1};
        std::uint32_t mask = 0;
    } selection;
    selection.head.deviceid = device;
    selection.mask = events;
    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &selection.head);
}

} // namespace

/// Before the devices are looked at, so that nothing is missed that happens meanwhile.
void ScrollReversal::listen() {
    if (notifier_) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
    select(*connection_, XCB_INPUT_DEVICE_ALL,
           XCB_INPUT_XI_EVENT_MASK_HIERARCHY | XCB_INPUT_XI_EVENT_MASK_PROPERTY);
}

void ScrollReversal::listenToMap(xcb_input_device_id_t device) const {
    const auto kind = static_cast<xcb_input_event_class_t>(device << 8U | mappingEvent_);
    xcb_input_select_extension_event(connection_->get(), connection_->root(), 1, &kind);
}

void ScrollReversal::listenToReleases(xcb_input_device_id_t device, bool listens) const {
    select(*connection_, device, listens ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE : 0);
}

void ScrollReversal::readEvents() {
    const bool wasReading = std::exchange(isReading_, true);
    while (connection_) {
        const XcbOwned<xcb_generic_event_t> event(xcb_poll_for_event(connection_->get()));
        if (event) {
            handleEvent(*event);
        } else if (connection_->isBroken()) {
            connectionLost();
        } else if (haveDevicesChanged_) {
            settleDevices();
        } else {
            xcb_flush(connection_->get());
            break;
        }
    }
    isReading_ = wasReading;
}

void ScrollReversal::handleEvent(const xcb_generic_event_t& event) {
    if (event.response_type == mappingEvent_) {
        const auto& map = reinterpret_cast<const xcb_input_device_mapping_notify_event_t&>(event);
        settingChanged(map.device_id, XCB_ATOM_NONE, event.full_sequence);
        return;
    }
    if (event.response_type != XCB_GE_GENERIC) {
        return;
    }
    switch (reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type) {
    case XCB_INPUT_PROPERTY: {
        const auto& property = reinterpret_cast<const xcb_input_property_event_t&>(event);
        settingChanged(property.deviceid, property.property, event.full_sequence);
        break;
    }
    case XCB_INPUT_HIERARCHY:
        devicesChanged(reinterpret_cast<const xcb_input_hierarchy_event_t&>(event));
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        released(reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event).deviceid);
        break;
    default:
        break;
    }
}

/// A number may be another device's from now on.
void ScrollReversal::devicesChanged(const xcb_input_hierarchy_event_t& event) {
    constexpr std::uint32_t another =
        XCB_INPUT_HIERARCHY_MASK_SLAVE_ADDED | XCB_INPUT_HIERARCHY_MASK_SLAVE_REMOVED;
    auto infos = xcb_input_hierarchy_infos_iterator(&event);
    for (; infos.rem > 0; xcb_input_hierarchy_info_next(&infos)) {
        if ((infos.data->flags & another) != 0) {
            devices_.erase(infos.data->deviceid);
        }
    }
    haveDevicesChanged_ = true;
}

void ScrollReversal::settingChanged(xcb_input_device_id_t device, xcb_atom_t property,
                                    std::uint32_t sequence) {
    const auto found = devices_.find(device);
    if (found == devices_.end() || found->second.setting().property() != property) {
        return;
    }
    DeviceReversal& reversal = found->second;
    const bool wasBusy = reversal.isBusy();
    reversal.changed(sequence, diagnostics_);
    if (reversal.isBusy() && !wasBusy) {
        listenToReleases(device, true);
        haveDevicesChanged_ = true;
    }
    publish();
}

void ScrollReversal::released(xcb_input_device_id_t device) {
    const auto found = devices_.find(device);
    haveDevicesChanged_ =
        haveDevicesChanged_ || (found != devices_.end() && found->second.isBusy());
}

} // namespace quillon
