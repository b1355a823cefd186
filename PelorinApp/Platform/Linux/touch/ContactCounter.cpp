#include "Platform/Linux/touch/ContactCounter.h"

#include <algorithm>
#include <array>
#include <utility>

#include <linux/input.h>

namespace quillon {

namespace {

constexpr std::array<unsigned int, 6> keyCodes{BTN_TOUCH,          BTN_TOOL_FINGER,
                                               BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP,
                                               BTN_TOOL_QUADTAP,   BTN_TOOL_QUINTTAP};
static_assert(ContactKeys().size() == keyCodes.size());

constexpr std::size_t touchKey = 0;
constexpr int noFinger = -1;

bool isDown(const ContactSlot& slot) { return slot.trackingId >= 0 && slot.distance <= 0; }
bool isPalm(const ContactSlot& slot) { return slot.toolType == MT_TOOL_PALM; }
bool isFinger(const ContactSlot& slot) { return isDown(slot) && !isPalm(slot); }

/// Several are down only between two frames.
int contactsByKeys(const ContactKeys& keys) {
    for (int contacts = static_cast<int>(keys.size()) - 1; contacts > 0; --contacts) {
        if (keys[static_cast<std::size_t>(contacts)]) {
            return contacts;
        }
    }
    return keys[touchKey] ? 1 : 0;
}

} // namespace

std::size_t contactKey(unsigned int code) {
    return static_cast<std::size_t>(std::find(keyCodes.begin(), keyCodes.end(), code) -
                                    keyCodes.begin());
}

ContactCounter::ContactCounter(ContactState state) { reset(std::move(state)); }

bool ContactCounter::handle(unsigned int type, unsigned int code, int value) {
    if (type == EV_KEY) {
        const std::size_t key = contactKey(code);
        if (key < state_.keys.size()) {
            isChanged_ = isChanged_ || state_.keys[key] != (value != 0);
            state_.keys[key] = value != 0;
        }
    } else if (type == EV_ABS) {
        change(code, value);
    } else if (type == EV_SYN && code == SYN_REPORT && std::exchange(isChanged_, false)) {
        return endFrame();
    }
    return false;
}

void ContactCounter::change(unsigned int code, int value) {
    if (code == ABS_MT_SLOT) {
        state_.slot = value;
        return;
    }
    if (state_.slot < 0 || static_cast<std::size_t>(state_.slot) >= state_.slots.size()) {
        return;
    }
    ContactSlot& slot = state_.slots[static_cast<std::size_t>(state_.slot)];
    switch (code) {
    case ABS_MT_TRACKING_ID:
        slot.trackingId = value;
        break;
    case ABS_MT_TOOL_TYPE:
        slot.toolType = value;
        break;
    case ABS_MT_DISTANCE:
        slot.distance = value;
        break;
    default:
        return;
    }
    isChanged_ = true;
}

bool ContactCounter::reset(ContactState state) {
    state_ = std::move(state);
    fingers_.resize(state_.slots.size(), noFinger);
    isChanged_ = false;
    return endFrame();
}

/// True when fingers are not those of the frame before.
bool ContactCounter::endFrame() {
    const int before = std::exchange(contacts_, count());
    bool areOthers = contacts_ != before;
    for (std::size_t i = 0; i < fingers_.size(); ++i) {
        const ContactSlot& slot = state_.slots[i];
        const int finger = isFinger(slot) ? slot.trackingId : noFinger;
        areOthers = std::exchange(fingers_[i], finger) != finger || areOthers;
    }
    return areOthers;
}

int ContactCounter::count() const {
    const int told = contactsByKeys(state_.keys);
    if (state_.slots.empty()) {
        // A finger that only comes near is told of by its tool key, too.
        return state_.hasTouchKey && !state_.keys[touchKey] ? 0 : told;
    }
    const auto fingers =
        static_cast<int>(std::count_if(state_.slots.begin(), state_.slots.end(), isFinger));
    if (static_cast<std::size_t>(told) <= state_.slots.size()) {
        return fingers;
    }
    const auto palms = static_cast<int>(
        std::count_if(state_.slots.begin(), state_.slots.end(),
                      [](const ContactSlot& slot) { return isDown(slot) && isPalm(slot); }));
    return std::max(fingers, told - palms);
}

} // namespace quillon
