#include "Platform/Linux/touch/UdevTouchpads.h"

#include <cerrno>
#include <string_view>

#include <fcntl.h>
#include <libudev.h>

namespace quillon {

namespace {

constexpr const char* isTouchpad = "ID_INPUT_TOUCHPAD";

/// Each device is a node of events below one or more that have other uses.
bool isNode(udev_device* device) {
    const char* name = udev_device_get_sysname(device);
    return name != nullptr && std::string_view(name).starts_with("event") &&
           udev_device_get_devnode(device) != nullptr;
}

} // namespace

void UdevTouchpads::Release::operator()(udev* it) const { udev_unref(it); }
void UdevTouchpads::Release::operator()(udev_device* it) const { udev_device_unref(it); }
void UdevTouchpads::Release::operator()(udev_enumerate* it) const { udev_enumerate_unref(it); }
void UdevTouchpads::Release::operator()(udev_monitor* it) const { udev_monitor_unref(it); }

std::unique_ptr<TouchpadDirectory> UdevTouchpads::make() {
    std::unique_ptr<UdevTouchpads> made(new UdevTouchpads);
    made->udev_.reset(udev_new());
    if (made->udev_ == nullptr) {
        return nullptr;
    }
    made->follow();
    return made;
}

void UdevTouchpads::follow() {
    // Of the device manager, not of the kernel: it has set permissions when it tells of a device.
    monitor_.reset(udev_monitor_new_from_netlink(udev_.get(), "udev"));
    if (monitor_ != nullptr &&
        (udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "input", nullptr) < 0 ||
         udev_monitor_enable_receiving(monitor_.get()) < 0)) {
        monitor_ = nullptr;
    }
}

int UdevTouchpads::descriptor() const {
    return monitor_ == nullptr ? -1 : udev_monitor_get_fd(monitor_.get());
}

bool UdevTouchpads::readNews() {
    bool hasNews = false;
    // As many as there may reasonably be: the rest is still there to be read.
    for (int count = 0; count < 100; ++count) {
        errno = 0;
        const std::unique_ptr<udev_device, Release> device(
            udev_monitor_receive_device(monitor_.get()));
        if (device == nullptr) {
            // Too much has come for what there is room for, and is lost.
            hasNews = hasNews || errno == ENOBUFS;
            break;
        }
        const char* touchpad = udev_device_get_property_value(device.get(), isTouchpad);
        hasNews = hasNews || (isNode(device.get()) && touchpad != nullptr &&
                              std::string_view(touchpad) == "1");
    }
    return hasNews;
}

std::vector<TouchpadNode> UdevTouchpads::list() {
    std::vector<TouchpadNode> nodes;
    const std::unique_ptr<udev_enumerate, Release> all(udev_enumerate_new(udev_.get()));
    if (all == nullptr || udev_enumerate_add_match_subsystem(all.get(), "input") < 0 ||
        udev_enumerate_add_match_property(all.get(), isTouchpad, "1") < 0 ||
        udev_enumerate_scan_devices(all.get()) < 0) {
        return nodes;
    }
    for (udev_list_entry* entry = udev_enumerate_get_list_entry(all.get()); entry != nullptr;
         entry = udev_list_entry_get_next(entry)) {
        const char* path = udev_list_entry_get_name(entry);
        const std::unique_ptr<udev_device, Release> device(
            udev_device_new_from_syspath(udev_.get(), path));
        if (device != nullptr && isNode(device.get())) {
            nodes.push_back({path, udev_device_get_devnode(device.get())});
        }
    }
    return nodes;
}

FileDescriptor UdevTouchpads::open(const TouchpadNode& node) {
    return FileDescriptor(::open(node.path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

} // namespace quillon
