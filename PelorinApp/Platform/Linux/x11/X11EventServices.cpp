#include "Platform/Linux/x11/X11EventServices.h"

#include <string>
#include <utility>

namespace quillon {

namespace {

/// How long an event may wait for the taps. The pointer stands still meanwhile, so it must stay
/// below what a person takes for a fault.
constexpr std::chrono::milliseconds tapPatience{200};

} // namespace

class X11EventServices::Tap final : public EventTap {
  public:
    Tap(X11EventServices& owner, std::uint64_t interest, EventTapCallback function, void* context,
        std::string_view tool)
        : mask(interest), callback(function), userInfo(context), toolId(tool), services_(owner) {}
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() override { services_.publishTaps(); }

    [[nodiscard]] bool isListening() const { return enabled && attached; }
    [[nodiscard]] bool wantsScrolls() const {
        return isListening() && (mask & eventMask(EventType::scrollWheel)) != 0;
    }

    void setAttached(bool now) {
        attached = now;
        services_.publishTaps();
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
                                   X11Displays& displays, std::function<bool()> mayTap,
                                   std::filesystem::path watchdog)
    : runLoop_(runLoop), diagnostics_(diagnostics), displays_(displays), mayTap_(std::move(mayTap)),
      watchdog_(std::move(watchdog)),
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
    if (!holder_) {
        startHolder();
    }
    publishTaps();
    return tap;
}

RunLoopSourceRef X11EventServices::createRunLoopSource(const EventTapRef& tap) {
    return std::make_shared<Source>(std::static_pointer_cast<Tap>(tap));
}

void X11EventServices::enableTap(EventTap& tap, bool enable) {
    static_cast<Tap&>(tap).enabled = enable;
    publishTaps();
}

void X11EventServices::setInvalidationHandler(EventTap& tap, std::function<void()> handler) {
    static_cast<Tap&>(tap).invalidated = std::move(handler);
}

void X11EventServices::setArmedAt(EventTap& tap, ArmedAt armedAt) {
    static_cast<Tap&>(tap).armedAt = std::move(armedAt);
    publishTaps();
}

EventRef X11EventServices::createEvent() { return nullptr; }

EventRef X11EventServices::createMouseEvent(EventType type, Point position, MouseButton button) {
    return std::make_unique<FieldEvent>(type, position, button);
}

void X11EventServices::post(TapLocation /*location*/, const Event& /*event*/) {}

void X11EventServices::setPanicHandler(std::function<void()> handler) {
    panicHandler_ = std::move(handler);
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

void X11EventServices::publishTaps() {
    if (!holder_) {
        return;
    }
    const auto taps = living();
    ArmedPlaces places;
    for (const auto& tap : taps) {
        if (tap->wantsScrolls() && tap->armedAt) {
            places.push_back(tap->armedAt);
        }
    }
    holder_->setTaps(!taps.empty(), std::move(places));
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
        exchange_, watchdog_,
        InputHolder::Listener{
            .wakeMain = [this] { question_.wake(); },
            .diagnostic = [this](const std::string& text) { diagnostics_.line(text); },
            .panic = [onMain] { onMain(&X11EventServices::panicked); },
            .lost = [onMain] { onMain(&X11EventServices::holderLost); },
        });
    holder_->setGeometry(geometry_);
}

void X11EventServices::panicked() {
    diagnostics_.line(std::string("🛑 ") + PanicChord::name +
                      ": all input is let go of, and the tools are off until they are switched on");
    if (panicHandler_) {
        panicHandler_();
    }
    if (holder_) {
        holder_->resume();
    }
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
    ScrollNotch notch;
    switch (exchange_.take(notch)) {
    case TapExchange::Question::open: {
        const Verdict verdict = runTaps(notch);
        if (!exchange_.answer(verdict)) {
            if (const auto late = asked_.lock()) {
                switchOff(*late);
            } else {
                publishTaps(); // the holder has let go of everything, and waits to hear of the taps
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

Verdict X11EventServices::runTaps(const ScrollNotch& notch) {
    FieldEvent event = eventOfNotch(notch);
    const X11Displays::EventScope scope(displays_, notch.location);
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
    publishTaps();
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
