#include "Tools/Pointer/ThreeFingerPress.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

namespace quillon {

namespace {

constexpr double clickDuration = 0.01; // seconds

/// The shortest text that reads as this number, with a decimal point.
std::string decimal(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), value).ptr;
    std::string decimal(text.begin(), end);
    if (std::isfinite(value) && decimal.find_first_of(".e") == std::string::npos) {
        decimal += ".0";
    }
    return decimal;
}

std::string describe(Point point) { return '(' + decimal(point.x) + ", " + decimal(point.y) + ')'; }

bool postMiddle(EventServices& events, EventType type, Point position) {
    const EventRef event = events.createMouseEvent(type, position, MouseButton::middle);
    if (!event) {
        return false;
    }
    events.post(TapLocation::hid, *event);
    return true;
}

} // namespace

ThreeFingerPress::ThreeFingerPress(Platform& platform,
                                   std::shared_ptr<ThreeFingerTouchMonitor> monitor,
                                   std::function<bool()> isOn)
    : platform_(platform), monitor_(std::move(monitor)), isOn_(std::move(isOn)),
      mouseTap_(platform, EventType::leftMouseDown) {
    monitor_->setThreeContactsHandler([this](bool three) { setArmed(three); });
}

ThreeFingerPress::~ThreeFingerPress() {
    stop();
    monitor_->setThreeContactsHandler(nullptr);
}

void ThreeFingerPress::start() {
    monitor_->start();
    if (!mouseTap_.install(&ThreeFingerPress::tapCallback, this, toolId)) {
        platform_.diagnostics.line(
            "⚠️ Failed to install mouse event tap for three-finger press");
    }
}

void ThreeFingerPress::stop() {
    mouseTap_.remove();
    monitor_->stop();
}

void ThreeFingerPress::update() {
    if (mouseTap_.exists()) {
        setArmed(monitor_->hasThreeContacts());
    }
}

void ThreeFingerPress::setArmed(bool armed) {
    if (armed && isOn_()) {
        mouseTap_.setArmedAt([](Point, std::span<const Rect>) { return true; });
    } else {
        mouseTap_.setArmedAt(nullptr);
    }
}

Event* ThreeFingerPress::tapCallback(EventType type, Event* event, void* userInfo) {
    auto* press = static_cast<ThreeFingerPress*>(userInfo);
    if (type != EventType::leftMouseDown || press == nullptr) {
        return event;
    }
    if (press->isOn_() && press->monitor_->hasThreeContacts()) {
        press->clickMiddle();
        return nullptr;
    }
    return event;
}

void ThreeFingerPress::clickMiddle() {
    EventServices& events = platform_.events;
    const EventRef here = events.createEvent();
    const Point position = here ? here->location() : platform_.displays.mouseLocation();
    postMiddle(events, EventType::otherMouseDown, position);
    // Whatever becomes of the tool meanwhile: what goes down must come up.
    platform_.runLoop.asyncAfter(
        clickDuration, [&events, &diagnostics = platform_.diagnostics, position] {
            if (postMiddle(events, EventType::otherMouseUp, position)) {
                diagnostics.line("✅ Middle mouse click simulated at " + describe(position));
            }
        });
}

} // namespace quillon
