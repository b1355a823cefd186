#include "Tools/Edges/ScrollTap.h"

#include <utility>

namespace quillon {

bool ScrollTap::install(EventTapCallback callback, void* userInfo, std::string_view owner) {
    if (exists()) {
        return true;
    }
    EventServices& events = platform_.events;
    eventTap_ = events.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                                 eventMask(EventType::scrollWheel), callback, userInfo, owner);
    if (!eventTap_) {
        return false;
    }
    // A tap that the system has taken away counts as absent, so that the health timer brings it
    // back.
    events.setInvalidationHandler(*eventTap_, [this] { remove(); });
    runLoopSource_ = events.createRunLoopSource(eventTap_);
    if (runLoopSource_) {
        platform_.runLoop.addSource(runLoopSource_);
        events.enableTap(*eventTap_, true);
    }
    return true;
}

void ScrollTap::remove() {
    if (runLoopSource_) {
        platform_.runLoop.removeSource(runLoopSource_);
        runLoopSource_.reset();
    }
    if (eventTap_) {
        platform_.events.enableTap(*eventTap_, false);
        eventTap_.reset();
    }
}

void ScrollTap::reenable() {
    if (eventTap_) {
        platform_.events.enableTap(*eventTap_, true);
    }
}

void ScrollTap::setArmedAt(ArmedAt armedAt) {
    if (eventTap_) {
        platform_.events.setArmedAt(*eventTap_, std::move(armedAt));
    }
}

} // namespace quillon
