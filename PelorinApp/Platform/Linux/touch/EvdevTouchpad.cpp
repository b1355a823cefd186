#include "Platform/Linux/touch/EvdevTouchpad.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <utility>

#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <sys/ioctl.h>

namespace quillon {

namespace {

template <unsigned int count>
void letThrough(int fd, unsigned int type, std::initializer_list<unsigned int> codes) {
    using Word = unsigned long; // the kernel takes nothing but whole ones
    constexpr unsigned int wordBits = sizeof(Word) * 8;
    std::array<Word, (count + wordBits - 1) / wordBits> bits{};
    for (const unsigned int code : codes) {
        bits[code / wordBits] |= Word{1} << code % wordBits;
    }
    const input_mask mask{type, sizeof bits, reinterpret_cast<std::uintptr_t>(bits.data())};
    // Where the kernel is too old for it we are woken more often, and that is all.
    ioctl(fd, EVIOCSMASK, &mask);
}

void letThroughOnlyContacts(int fd) {
    letThrough<EV_CNT>(fd, EV_SYN, {EV_SYN, EV_KEY, EV_ABS}); // of types: that one's meaning
    letThrough<KEY_CNT>(fd, EV_KEY,
                        {BTN_TOUCH, BTN_TOOL_FINGER, BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP,
                         BTN_TOOL_QUADTAP, BTN_TOOL_QUINTTAP});
    letThrough<ABS_CNT>(fd, EV_ABS,
                        {ABS_MT_SLOT, ABS_MT_TRACKING_ID, ABS_MT_TOOL_TYPE, ABS_MT_DISTANCE});
}

void sayNothing(const libevdev*, libevdev_log_priority, void*, const char*, int, const char*,
                const char*, va_list) {}

} // namespace

void EvdevTouchpad::Free::operator()(libevdev* device) const { libevdev_free(device); }

std::unique_ptr<EvdevTouchpad> EvdevTouchpad::make(FileDescriptor file) {
    Device device(libevdev_new());
    if (device == nullptr) {
        throw std::bad_alloc();
    }
    libevdev_set_device_log_function(device.get(), &sayNothing, LIBEVDEV_LOG_ERROR, nullptr);
    letThroughOnlyContacts(file.get());
    if (libevdev_set_fd(device.get(), file.get()) != 0) {
        return nullptr;
    }
    std::unique_ptr<EvdevTouchpad> touchpad(new EvdevTouchpad(std::move(file), std::move(device)));
    libevdev* const opened = touchpad->device_.get();
    if (libevdev_has_event_pending(opened) != 0) {
        // What has come since it was opened may be part of what was read since, or not.
        input_event event{};
        libevdev_next_event(opened, LIBEVDEV_READ_FLAG_FORCE_SYNC, &event);
        if (!touchpad->synchronise()) {
            return nullptr;
        }
    }
    return touchpad;
}

EvdevTouchpad::EvdevTouchpad(FileDescriptor file, Device device)
    : file_(std::move(file)), device_(std::move(device)), counter_(state()) {}

bool EvdevTouchpad::read(const std::function<void()>& touched) {
    while (true) {
        input_event event{};
        const int status = libevdev_next_event(device_.get(), LIBEVDEV_READ_FLAG_NORMAL, &event);
        if (status == LIBEVDEV_READ_STATUS_SUCCESS) {
            if (counter_.handle(event.type, event.code, event.value)) {
                touched();
            }
        } else if (status == LIBEVDEV_READ_STATUS_SYNC) {
            const auto fingersChanged = synchronise();
            if (!fingersChanged) {
                return false;
            }
            if (*fingersChanged) {
                touched();
            }
        } else if (status != -EINTR) {
            return status == -EAGAIN;
        }
    }
}

std::optional<bool> EvdevTouchpad::synchronise() {
    // A state that changes while it is read is read again, but not for ever.
    for (int tries = 0; tries < 5; ++tries) {
        input_event event{};
        int status = LIBEVDEV_READ_STATUS_SYNC;
        while (status == LIBEVDEV_READ_STATUS_SYNC || status == -EINTR) {
            // Told as changes, contact after contact, of which some never were.
            status = libevdev_next_event(device_.get(), LIBEVDEV_READ_FLAG_SYNC, &event);
        }
        if (status != -EAGAIN) {
            return std::nullopt;
        }
        if (libevdev_has_event_pending(device_.get()) == 0 ||
            libevdev_next_event(device_.get(), LIBEVDEV_READ_FLAG_FORCE_SYNC, &event) < 0) {
            break;
        }
    }
    return counter_.reset(state());
}

ContactState EvdevTouchpad::state() const {
    libevdev* device = device_.get();
    ContactState state;
    state.hasTouchKey = libevdev_has_event_code(device, EV_KEY, BTN_TOUCH) != 0;
    for (unsigned int code = BTN_DIGI; code <= BTN_TOOL_QUADTAP; ++code) {
        const std::size_t key = contactKey(code);
        if (key < state.keys.size()) {
            state.keys[key] = libevdev_get_event_value(device, EV_KEY, code) != 0;
        }
    }
    const int slots = libevdev_get_num_slots(device);
    if (slots <= 0 || libevdev_has_event_code(device, EV_ABS, ABS_MT_TRACKING_ID) == 0) {
        return state;
    }
    state.slot = libevdev_get_current_slot(device);
    for (unsigned int slot = 0; slot < static_cast<unsigned int>(slots); ++slot) {
        state.slots.push_back({libevdev_get_slot_value(device, slot, ABS_MT_TRACKING_ID),
                               libevdev_get_slot_value(device, slot, ABS_MT_TOOL_TYPE),
                               libevdev_get_slot_value(device, slot, ABS_MT_DISTANCE)});
    }
    return state;
}

} // namespace quillon
