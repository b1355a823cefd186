#include "Platform/Linux/touch/ContactCounter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <linux/input.h>

namespace {

using quillon::ContactCounter;
using quillon::ContactState;

constexpr std::array<std::pair<unsigned int, unsigned int>, 14> codes{{
    {EV_SYN, SYN_REPORT},
    {EV_ABS, ABS_MT_SLOT},
    {EV_ABS, ABS_MT_TRACKING_ID},
    {EV_ABS, ABS_MT_TOOL_TYPE},
    {EV_ABS, ABS_MT_DISTANCE},
    {EV_ABS, ABS_MT_POSITION_X},
    {EV_KEY, BTN_TOUCH},
    {EV_KEY, BTN_TOOL_FINGER},
    {EV_KEY, BTN_TOOL_DOUBLETAP},
    {EV_KEY, BTN_TOOL_TRIPLETAP},
    {EV_KEY, BTN_TOOL_QUADTAP},
    {EV_KEY, BTN_TOOL_QUINTTAP},
    {EV_KEY, BTN_LEFT},
    {EV_REL, REL_X},
}};
constexpr int mostByKeys = 5;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Whoever begins with what this one knows counts the same.
void checkState(const ContactCounter& counter) {
    ContactCounter other(counter.state());
    require(other.contacts() == counter.contacts());
    require(!other.reset(counter.state()));
}

void liftAll(ContactCounter& counter) {
    for (std::size_t slot = 0; slot < counter.state().slots.size(); ++slot) {
        counter.handle(EV_ABS, ABS_MT_SLOT, static_cast<int>(slot));
        counter.handle(EV_ABS, ABS_MT_TRACKING_ID, -1);
    }
    for (unsigned int key = BTN_DIGI; key <= BTN_TOOL_QUADTAP; ++key) {
        counter.handle(EV_KEY, key, 0);
    }
    const bool isTouched = counter.contacts() > 0;
    const bool isNews = counter.handle(EV_SYN, SYN_REPORT, 0);
    require(isNews || !isTouched);
    require(counter.contacts() == 0);
}

} // namespace

/// The first byte says what the touchpad is like, then each event is two.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t slots = data[0] % 12;
    ContactState state{.slots = std::vector<quillon::ContactSlot>(slots),
                       .hasTouchKey = data[0] >= 128};
    ContactCounter counter(state);
    for (std::size_t i = 1; i + 1 < size; i += 2) {
        const auto [type, code] = codes[data[i] % codes.size()];
        // Small ones mean something; and then there are the ends.
        const int value = data[i + 1] == 127   ? INT32_MAX
                          : data[i + 1] == 128 ? INT32_MIN
                                               : static_cast<std::int8_t>(data[i + 1]);
        const int before = counter.contacts();
        const bool isNews = counter.handle(type, code, value);
        require(!isNews || type == EV_SYN);
        require(isNews || counter.contacts() == before);
        const int most = std::max(static_cast<int>(slots), mostByKeys);
        require(counter.contacts() >= 0 && counter.contacts() <= most);
        if (type == EV_SYN) {
            checkState(counter);
        }
    }
    liftAll(counter);
    return 0;
}
