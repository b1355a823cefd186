#include "Platform/Linux/x11/HolderEvents.h"

#include <utility>

namespace quillon {

XcbOwned<xcb_generic_event_t> HolderEvents::next() {
    XcbOwned<xcb_generic_event_t> event;
    if (!early_.empty()) {
        event = std::move(early_.front());
        early_.pop_front();
        return event;
    }
    event.reset(xcb_poll_for_event(connection_.get()));
    if (event) {
        wheel_.note(*event);
    }
    return event;
}

void HolderEvents::readEarly() {
    while (XcbOwned<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_.get())}) {
        wheel_.note(*event);
        early_.push_back(std::move(event));
    }
}

bool HolderEvents::isQuiet() {
    connection_.sync();
    readEarly();
    return early_.empty();
}

} // namespace quillon
