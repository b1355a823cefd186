#include "Platform/Simulated/SimulatedEventServices.h"

#include "Platform/Simulated/ActionNumber.h"

#include <string>
#include <utility>

namespace quillon {

class SimulatedEventServices::SimulatedTap final : public EventTap {
  public:
    SimulatedTap(TapOptions tapOptions, std::uint64_t interest, EventTapCallback function,
                 void* context, std::string_view tool, ActionSink& sink)
        : options(tapOptions), mask(interest), callback(function), userInfo(context), owner(tool),
          sink_(sink) {}
    SimulatedTap(const SimulatedTap&) = delete;
    SimulatedTap& operator=(const SimulatedTap&) = delete;
    ~SimulatedTap() override {
        if (!dropped) {
            sink_("tap", "remove " + owner);
        }
    }

    [[nodiscard]] bool isListening() const { return enabled && attached && !dropped; }

    TapOptions options;
    std::uint64_t mask;
    EventTapCallback callback;
    void* userInfo;
    std::string owner;
    bool enabled = false;
    bool attached = false;
    bool dropped = false;
    std::function<void()> invalidated;
    ArmedAt armedAt;
    ConstantRewrite constantRewrite;

  private:
    ActionSink& sink_;
};

class SimulatedEventServices::SimulatedSource final : public RunLoopSource {
  public:
    explicit SimulatedSource(const std::shared_ptr<SimulatedTap>& tap) : tap_(tap) {}
    void attach() override { setAttached(true); }
    void detach() override { setAttached(false); }

  private:
    void setAttached(bool attached) {
        if (const auto tap = tap_.lock()) {
            tap->attached = attached;
        }
    }
    std::weak_ptr<SimulatedTap> tap_;
};

namespace {
template <class Tap>
Tap& simulated(EventTap& tap) {
    return static_cast<Tap&>(tap);
}
} // namespace

EventTapRef SimulatedEventServices::createTap(TapLocation /*location*/, TapPlacement /*placement*/,
                                              TapOptions options, std::uint64_t eventsOfInterest,
                                              EventTapCallback callback, void* userInfo,
                                              std::string_view owner) {
    if (!granting_) {
        return nullptr;
    }
    auto tap =
        std::make_shared<SimulatedTap>(options, eventsOfInterest, callback, userInfo, owner, sink_);
    std::erase_if(taps_, [](const auto& old) { return old.expired(); });
    taps_.insert(taps_.begin(), tap);
    sink_("tap", "install " + tap->owner);
    return tap;
}

RunLoopSourceRef SimulatedEventServices::createRunLoopSource(const EventTapRef& tap) {
    return std::make_shared<SimulatedSource>(std::static_pointer_cast<SimulatedTap>(tap));
}

void SimulatedEventServices::enableTap(EventTap& tap, bool enable) {
    simulated<SimulatedTap>(tap).enabled = enable;
}

void SimulatedEventServices::setInvalidationHandler(EventTap& tap, std::function<void()> handler) {
    simulated<SimulatedTap>(tap).invalidated = std::move(handler);
}

void SimulatedEventServices::setArmedAt(EventTap& tap, ArmedAt armedAt) {
    simulated<SimulatedTap>(tap).armedAt = std::move(armedAt);
}

std::vector<std::shared_ptr<SimulatedEventServices::SimulatedTap>>
SimulatedEventServices::living() const {
    std::vector<std::shared_ptr<SimulatedTap>> taps;
    for (const auto& weak : taps_) {
        if (auto tap = weak.lock(); tap && !tap->dropped) {
            taps.push_back(std::move(tap));
        }
    }
    return taps;
}

SimulatedEventServices::Fate SimulatedEventServices::deliver(EventType type, FieldEvent& event) {
    const FieldEvent before = event;
    for (const auto& tap : living()) {
        if (!tap->isListening() || (tap->mask & eventMask(type)) == 0) {
            continue;
        }
        if (tap->options == TapOptions::listenOnly) {
            FieldEvent copy = event;
            tap->callback(type, &copy, tap->userInfo);
        } else if (tap->callback(type, &event, tap->userInfo) == nullptr) {
            return Fate::consume;
        }
    }
    return event == before ? Fate::pass : Fate::rewrite;
}

void SimulatedEventServices::disableAll(EventType reason) {
    const auto taps = living();
    for (const auto& tap : taps) {
        tap->enabled = false;
    }
    for (const auto& tap : taps) {
        if (tap->attached) {
            tap->callback(reason, nullptr, tap->userInfo);
        }
    }
}

void SimulatedEventServices::drop(std::string_view owner) {
    for (const auto& tap : living()) {
        if (tap->owner == owner) {
            tap->dropped = true;
            if (tap->invalidated) {
                std::exchange(tap->invalidated, nullptr)();
            }
        }
    }
}

void SimulatedEventServices::setConstantRewrite(EventTap& tap, ConstantRewrite rewrite) {
    simulated<SimulatedTap>(tap).constantRewrite = rewrite;
}

EventRef SimulatedEventServices::createEvent() {
    if (!makesEmptyEvents_) {
        return nullptr;
    }
    return std::make_unique<FieldEvent>(EventType::scrollWheel,
                                        fromTopLeft(displays_.mouseLocation(), displays_.screens()),
                                        MouseButton::left);
}

EventRef SimulatedEventServices::createMouseEvent(EventType type, Point position,
                                                  MouseButton button) {
    return makesMouseEvents_ ? std::make_unique<FieldEvent>(type, position, button) : nullptr;
}

EventRef SimulatedEventServices::createSystemDefinedEvent(const SystemDefinedEvent& event) {
    return makesSystemDefinedEvents_ ? std::make_unique<FieldEvent>(event) : nullptr;
}

void SimulatedEventServices::postKey(const SystemDefinedEvent& event) {
    constexpr std::int64_t half = 0x10000;
    constexpr std::int64_t down = 0xA00;
    constexpr std::int64_t up = 0xB00;
    const auto isKey = [](const SystemDefinedEvent& key, std::int64_t direction) {
        return key.subtype == 8 && key.data2 == -1 && key.data1 % half == direction &&
               key.modifierFlags == static_cast<std::uint64_t>(direction);
    };
    if (isKey(event, down)) {
        keyDown_ = event;
    } else if (isKey(event, up) && keyDown_ && keyDown_->data1 / half == event.data1 / half) {
        keyDown_.reset();
        sink_("key", std::to_string(event.data1 / half));
    }
}

void SimulatedEventServices::post(TapLocation /*location*/, const Event& event) {
    const auto& click = static_cast<const FieldEvent&>(event);
    if (click.systemDefined()) {
        postKey(*click.systemDefined());
        return;
    }
    postedButtons_.push_back(click.type());
    const bool isDown = click.type() == EventType::leftMouseDown ||
                        click.type() == EventType::rightMouseDown ||
                        click.type() == EventType::otherMouseDown;
    sink_("click", std::to_string(static_cast<std::uint32_t>(click.button())) +
                       (isDown ? " down " : " up ") + actionNumber(click.location().x) + ' ' +
                       actionNumber(click.location().y));
}

void SimulatedEventServices::setPanicHandler(std::function<void()> handler) {
    panicHandler_ = std::move(handler);
}

void SimulatedEventServices::panic() const {
    if (panicHandler_) {
        panicHandler_();
    }
}

bool SimulatedEventServices::hasTap(std::string_view owner) const {
    for (const auto& tap : living()) {
        if (tap->owner == owner) {
            return true;
        }
    }
    return false;
}

bool SimulatedEventServices::isListening(std::string_view owner) const {
    for (const auto& tap : living()) {
        if (tap->owner == owner && tap->isListening()) {
            return true;
        }
    }
    return false;
}

std::uint64_t SimulatedEventServices::eventsOfInterest(std::string_view owner) const {
    std::uint64_t mask = 0;
    for (const auto& tap : living()) {
        mask |= tap->owner == owner ? tap->mask : 0;
    }
    return mask;
}

ConstantRewrite SimulatedEventServices::constantRewrite(std::string_view owner) const {
    ConstantRewrite said;
    for (const auto& tap : living()) {
        if (tap->owner == owner && tap->isListening()) {
            said = tap->constantRewrite;
        }
    }
    return said;
}

bool SimulatedEventServices::isArmedAt(Point pointer, std::span<const Rect> screens) const {
    for (const auto& tap : living()) {
        if (tap->isListening() && tap->armedAt && tap->armedAt(pointer, screens)) {
            return true;
        }
    }
    return false;
}

} // namespace quillon
