#include "Tools/Edges/InputTap.h"

#include <utility>

namespace quillon {

bool InputTap::install(EventTapCallback callback, void* userInfo, std::string_view owner) {
    if (exists()) {
        return true;
    }
    EventServices& events = platform_.events;
    eventTap_ = events.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                                 eventMask(type_), callback, userInfo, owner);
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

void InputTap::remove() {
    if (runLoopSource_) {
        platform_.runLoop.removeSource(runLoopSource_);
        runLoopSource_.reset();
    }
    if (eventTap_) {
        platform_.events.enableTap(*eventTap_, false);
        eventTap_.reset();
    }
}

void InputTap::reenable() {
    if (eventTap_) {
        platform_.events.enableTap(*eventTap_, true);
    }
}

void InputTap::setArmedAt(ArmedAt armedAt) {
    if (eventTap_) {
        platform_.events.setArmedAt(*eventTap_, std::move(armedAt));
    }
}

void InputTap::setConstantRewrite(ConstantRewrite rewrite) {
    if (eventTap_) {
        platform_.events.setConstantRewrite(*eventTap_, rewrite);
    }
}

} // namespace quillon
