#include "Platform/Linux/x11/X11EventServices.h"

#include "Platform/FieldEvent.h"

#include <string>
#include <utility>

namespace quillon {

namespace {

/// How long an event may wait for the taps. The pointer stands still meanwhile, so it must stay
/// below what a person takes for a fault.
constexpr std::chrono::milliseconds tapPatience{200};

/// The notch of a wheel button in the numbered fields: up and right are positive.
FieldEvent scrollEvent(std::uint8_t button) {
    FieldEvent event;
    const bool vertical = button == 4 || button == 5;
    const bool positive = button == 4 || button == 7;
    event.setDoubleValueField(vertical ? EventField::scrollLineDeltaAxis1
                                       : EventField::scrollLineDeltaAxis2,
                              positive ? 1.0 : -1.0);
    return event;
}

} // namespace

class X11EventServices::Tap final : public EventTap {
  public:
    Tap(X11EventServices& owner, std::uint64_t interest, EventTapCallback function, void* context,
        std::string_view tool)
        : mask(interest), callback(function), userInfo(context), toolId(tool), services_(owner) {}
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() override { services_.publishArmed(); }

    [[nodiscard]] bool isListening() const { return enabled && attached; }
    [[nodiscard]] bool wantsScrolls() const {
        return isListening() && (mask & eventMask(EventType::scrollWheel)) != 0;
    }

    void setAttached(bool now) {
        attached = now;
        services_.publishArmed();
    }

    std::uint64_t mask;
    EventTapCallback callback;
    void* userInfo;
    std::string toolId;
    bool enabled = false;
    bool attached = false;
    ArmedAt armedAt;
    std::function<void()> invalidated;

  private:
    X11EventServices& services_;
};

class X11EventServices::Source final : public RunLoopSource {
  public:
    explicit Source(const std::shared_ptr<Tap>& tap) : tap_(tap) {}
    void attach() override { setAttached(true); }
    void detach() override { setAttached(false); }

  private:
    void setAttached(bool attached) {
        if (const auto tap = tap_.lock()) {
            tap->setAttached(attached);
        }
    }
    std::weak_ptr<Tap> tap_;
};

X11EventServices::X11EventServices(RunLoop& runLoop, Diagnostics& diagnostics,
                                   X11Displays& displays, std::function<bool()> mayTap)
    : runLoop_(runLoop), diagnostics_(diagnostics), displays_(displays), mayTap_(std::move(mayTap)),
      questionNotifier_(question_.descriptor(), QSocketNotifier::Read), exchange_(tapPatience),
      self_(std::make_shared<X11EventServices*>(this)) {
    QObject::connect(&questionNotifier_, &QSocketNotifier::activated, &questionNotifier_,
                     [this] { answerHolder(); });
    displays_.setGeometryHandler([this](const X11Displays::GeometryRef& geometry) {
        geometry_ = geometry;
        if (holder_) {
            holder_->setGeometry(geometry);
        }
    });
}

X11EventServices::~X11EventServices() { displays_.setGeometryHandler({}); }

EventTapRef X11EventServices::createTap(TapLocation /*location*/, TapPlacement /*placement*/,
                                        TapOptions /*options*/, std::uint64_t eventsOfInterest,
                                        EventTapCallback callback, void* userInfo,
                                        std::string_view owner) {
    if (!mayTap_()) {
        return nullptr;
    }
    auto tap = std::make_shared<Tap>(*this, eventsOfInterest, callback, userInfo, owner);
    std::erase_if(taps_, [](const auto& old) { return old.expired(); });
    taps_.insert(taps_.begin(), tap);
    return tap;
}

RunLoopSourceRef X11EventServices::createRunLoopSource(const EventTapRef& tap) {
    return std::make_shared<Source>(std::static_pointer_cast<Tap>(tap));
}

void X11EventServices::enableTap(EventTap& tap, bool enable) {
    static_cast<Tap&>(tap).enabled = enable;
    publishArmed();
}

void X11EventServices::setInvalidationHandler(EventTap& tap, std::function<void()> handler) {
    static_cast<Tap&>(tap).invalidated = std::move(handler);
}

void X11EventServices::setArmedAt(EventTap& tap, ArmedAt armedAt) {
    static_cast<Tap&>(tap).armedAt = std::move(armedAt);
    publishArmed();
}

std::vector<std::shared_ptr<X11EventServices::Tap>> X11EventServices::living() const {
    std::vector<std::shared_ptr<Tap>> taps;
    for (const auto& weak : taps_) {
        if (auto tap = weak.lock()) {
            taps.push_back(std::move(tap));
        }
    }
    return taps;
}

void X11EventServices::publishArmed() {
    InputHolder::ArmedPlaces places;
    for (const auto& tap : living()) {
        if (tap->wantsScrolls() && tap->armedAt) {
            places.push_back(tap->armedAt);
        }
    }
    if (!places.empty() && !holder_) {
        startHolder();
    }
    if (holder_) {
        holder_->setArmed(std::move(places));
    }
}

void X11EventServices::startHolder() {
    const auto onMain = [this](void (X11EventServices::*what)()) {
        runLoop_.async([weak = std::weak_ptr(self_), what] {
            if (const auto self = weak.lock()) {
                ((*self)->*what)();
            }
        });
    };
    holder_ = std::make_unique<InputHolder>(
        exchange_, InputHolder::Listener{
                       .wakeMain = [this] { question_.wake(); },
                       .diagnostic = [this](const std::string& text) { diagnostics_.line(text); },
                       .lost = [onMain] { onMain(&X11EventServices::holderLost); },
                   });
    holder_->setGeometry(geometry_);
}

void X11EventServices::holderLost() {
    holder_.reset();
    for (const auto& tap : living()) {
        if (tap->invalidated) {
            std::exchange(tap->invalidated, nullptr)();
        }
    }
}

void X11EventServices::answerHolder() {
    question_.clear();
    WheelPress press;
    switch (exchange_.take(press)) {
    case TapExchange::Question::open: {
        const Verdict verdict = runTaps(press);
        if (!exchange_.answer(verdict)) {
            if (const auto late = asked_.lock()) {
                switchOff(*late);
            }
        }
        break;
    }
    case TapExchange::Question::expired:
        // The whole main thread was busy: every tap has kept the event waiting.
        switchOffAll();
        break;
    case TapExchange::Question::none:
        break;
    }
}

Verdict X11EventServices::runTaps(const WheelPress& press) {
    FieldEvent event = scrollEvent(press.button);
    const X11Displays::EventScope scope(displays_, press.location);
    // By index: a callback may change the list. Nothing here allocates.
    for (std::size_t i = 0; i < taps_.size() && exchange_.isAwaited(); ++i) {
        const auto tap = taps_[i].lock();
        if (!tap || !tap->wantsScrolls()) {
            continue;
        }
        asked_ = tap;
        if (tap->callback(EventType::scrollWheel, &event, tap->userInfo) == nullptr) {
            return Verdict::consume;
        }
    }
    return Verdict::pass;
}

void X11EventServices::switchOff(Tap& tap) {
    diagnostics_.line("⚠️ " + tap.toolId + " kept a scroll waiting; it was passed on");
    tap.enabled = false;
    publishArmed();
    tap.callback(EventType::tapDisabledByTimeout, nullptr, tap.userInfo);
}

void X11EventServices::switchOffAll() {
    for (const auto& tap : living()) {
        if (tap->wantsScrolls()) {
            switchOff(*tap);
        }
    }
}

} // namespace quillon
