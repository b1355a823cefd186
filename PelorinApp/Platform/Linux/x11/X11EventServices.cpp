#include "Platform/Linux/x11/X11EventServices.h"

#include <string>
#include <utility>

namespace quillon {

namespace {

/// How long an event may wait for the taps. The pointer stands still meanwhile, so it must stay
/// below what a person takes for a fault.
constexpr std::chrono::milliseconds tapPatience{200};

std::string nameOf(EventType type) { return type == EventType::leftMouseDown ? "press" : "scroll"; }

} // namespace

class X11EventServices::Source final : public RunLoopSource {
  public:
    explicit Source(const std::shared_ptr<X11EventTap>& tap) : tap_(tap) {}
    void attach() override { setAttached(true); }
    void detach() override { setAttached(false); }

  private:
    void setAttached(bool attached) {
        if (const auto tap = tap_.lock()) {
            tap->setAttached(attached);
        }
    }
    std::weak_ptr<X11EventTap> tap_;
};

X11EventServices::X11EventServices(RunLoop& runLoop, Diagnostics& diagnostics,
                                   X11Displays& displays, std::function<bool()> mayTap,
                                   std::filesystem::path watchdog, PostedEvents& postedEvents,
                                   CaughtPresses& caughtPresses)
    : runLoop_(runLoop), diagnostics_(diagnostics), displays_(displays), mayTap_(std::move(mayTap)),
      watchdog_(std::move(watchdog)),
      questionNotifier_(question_.descriptor(), QSocketNotifier::Read), exchange_(tapPatience),
      postedEvents_(postedEvents), caughtPresses_(caughtPresses), reversal_(diagnostics, reversed_),
      self_(std::make_shared<X11EventServices*>(this)) {
    QObject::connect(&questionNotifier_, &QSocketNotifier::activated, &questionNotifier_,
                     [this] { answerHolder(); });
    caughtPresses_.whenSettled = [this](std::function<void()> done) {
        if (!holder_) {
            runLoop_.async(std::move(done));
            return;
        }
        holder_->settle([this, done = std::move(done)] { runLoop_.async(done); });
    };
    displays_.setGeometryHandler([this](const X11Displays::GeometryRef& geometry) {
        geometry_ = geometry;
        if (holder_) {
            holder_->setGeometry(geometry);
        }
    });
    reverseSoon(); // a life that ended by force may have left devices reversed
}

X11EventServices::~X11EventServices() {
    displays_.setGeometryHandler({});
    caughtPresses_.whenSettled = nullptr;
}

EventTapRef X11EventServices::createTap(TapLocation /*location*/, TapPlacement /*placement*/,
                                        TapOptions options, std::uint64_t eventsOfInterest,
                                        EventTapCallback callback, void* userInfo,
                                        std::string_view owner) {
    if (!mayTap_()) {
        return nullptr;
    }
    auto tap = std::make_shared<X11EventTap>([this] { publishTaps(); }, options, eventsOfInterest,
                                             callback, userInfo, owner);
    std::erase_if(taps_, [](const auto& old) { return old.expired(); });
    taps_.insert(taps_.begin(), tap);
    if (!holder_) {
        startHolder();
    }
    publishTaps();
    return tap;
}

RunLoopSourceRef X11EventServices::createRunLoopSource(const EventTapRef& tap) {
    return std::make_shared<Source>(std::static_pointer_cast<X11EventTap>(tap));
}

void X11EventServices::enableTap(EventTap& tap, bool enable) {
    static_cast<X11EventTap&>(tap).enabled = enable;
    publishTaps();
}

void X11EventServices::setInvalidationHandler(EventTap& tap, std::function<void()> handler) {
    static_cast<X11EventTap&>(tap).invalidated = std::move(handler);
}

void X11EventServices::setArmedAt(EventTap& tap, ArmedAt armedAt) {
    static_cast<X11EventTap&>(tap).armedAt = std::move(armedAt);
    publishTaps();
}

void X11EventServices::setConstantRewrite(EventTap& tap, ConstantRewrite rewrite) {
    static_cast<X11EventTap&>(tap).constantRewrite = rewrite;
    reverseSoon();
}

EventRef X11EventServices::createEvent() {
    if (!geometry_) {
        return nullptr;
    }
    return std::make_unique<FieldEvent>(EventType::scrollWheel,
                                        fromTopLeft(displays_.mouseLocation(), geometry_->frames()),
                                        MouseButton::left);
}

EventRef X11EventServices::createMouseEvent(EventType type, Point position, MouseButton button) {
    return std::make_unique<FieldEvent>(type, position, button);
}

EventRef X11EventServices::createSystemDefinedEvent(const SystemDefinedEvent& event) {
    return std::make_unique<FieldEvent>(event);
}

void X11EventServices::post(TapLocation /*location*/, const Event& event) {
    const auto& made = static_cast<const FieldEvent&>(event);
    if (made.systemDefined()) {
        postKey(*made.systemDefined());
        return;
    }
    const auto posted = postedButton(made);
    if (!posted) {
        return;
    }
    if (isAnswering_) {
        posts_.push_back(*posted);
    } else if (holder_) {
        holder_->post(*posted);
    }
}

void X11EventServices::postKey(const SystemDefinedEvent& event) {
    const auto key = pressedKey(event);
    if (!key || !keyHandler_) {
        return;
    }
    if (isAnswering_) {
        keyPosts_.push_back(*key);
    } else {
        keyHandler_(*key);
    }
}

/// What the callbacks have posted goes out after the event that they answered; nothing does when
/// the answer came too late, and that event goes to the applications instead.
void X11EventServices::settlePosts(bool areValid) {
    for (const PostedButton& posted : posts_) {
        if (areValid && holder_) {
            holder_->post(posted);
        }
    }
    posts_.clear();
    for (const SpecialKey key : keyPosts_) {
        if (areValid) {
            keyHandler_(key);
        }
    }
    keyPosts_.clear();
}

void X11EventServices::setPanicHandler(std::function<void()> handler) {
    panicHandler_ = std::move(handler);
}

void X11EventServices::setKeyHandler(std::function<void(SpecialKey)> handler) {
    keyHandler_ = std::move(handler);
}

std::vector<std::shared_ptr<X11EventTap>> X11EventServices::living() const {
    std::vector<std::shared_ptr<X11EventTap>> taps;
    for (const auto& weak : taps_) {
        if (auto tap = weak.lock()) {
            taps.push_back(std::move(tap));
        }
    }
    return taps;
}

/// Two that reverse the same cancel each other, as they would one after the other.
ConstantRewrite X11EventServices::wantedRewrite() const {
    ConstantRewrite wanted;
    for (const auto& tap : living()) {
        if (tap->wants(EventType::scrollWheel)) {
            const ConstantRewrite& its = tap->constantRewrite;
            wanted.reversesLines = wanted.reversesLines != its.reversesLines;
            wanted.reversesContinuous = wanted.reversesContinuous != its.reversesContinuous;
        }
    }
    return wanted;
}

/// When what changes together has changed: a tap that was too slow is off for a moment only.
void X11EventServices::reverseSoon() {
    if (std::exchange(isReversalDue_, true)) {
        return;
    }
    runLoop_.async([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock()) {
            (*self)->isReversalDue_ = false;
            (*self)->reversal_.follow((*self)->wantedRewrite());
        }
    });
}

void X11EventServices::publishTaps() {
    reverseSoon();
    if (!holder_) {
        return;
    }
    const auto taps = living();
    ArmedTaps armed;
    for (const auto& tap : taps) {
        if (tap->armedAt && tap->wants(EventType::scrollWheel)) {
            armed.scrolls.push_back(tap->armedAt);
        }
        if (tap->armedAt && tap->wants(EventType::leftMouseDown)) {
            armed.leftPresses.push_back(tap->armedAt);
        }
    }
    holder_->setTaps(!taps.empty(), std::move(armed));
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
        exchange_, postedEvents_, caughtPresses_, reversed_, watchdog_,
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
    TapQuestion question;
    switch (exchange_.take(question)) {
    case TapExchange::Question::open: {
        isAnswering_ = true;
        const Verdict verdict = runTaps(question);
        isAnswering_ = false;
        const bool isInTime = exchange_.answer(verdict);
        settlePosts(isInTime);
        if (!isInTime) {
            if (const auto late = asked_.lock()) {
                switchOff(*late, typeOf(question));
            } else {
                publishTaps(); // the holder has let go of everything, and waits to hear of the taps
            }
        }
        break;
    }
    case TapExchange::Question::expired:
        // The whole main thread was busy: every tap has kept the event waiting.
        switchOffAll(typeOf(question));
        break;
    case TapExchange::Question::none:
        break;
    }
}

Verdict X11EventServices::runTaps(const TapQuestion& question) {
    const EventType type = typeOf(question);
    const Point location = locationOf(question);
    FieldEvent event = eventOf(question, fromTopLeft(location, geometry_->frames()));
    const X11Displays::EventScope scope(displays_, location);
    // By index: a callback may change the list. Nothing here allocates.
    for (std::size_t i = 0; i < taps_.size() && exchange_.isAwaited(); ++i) {
        const auto tap = taps_[i].lock();
        if (!tap || !tap->wants(type)) {
            continue;
        }
        asked_ = tap;
        if (tap->options == TapOptions::listenOnly) {
            FieldEvent copy = event;
            tap->callback(type, &copy, tap->userInfo);
        } else if (tap->callback(type, &event, tap->userInfo) == nullptr) {
            return Verdict::consume;
        }
    }
    return isTurned(event, question) ? Verdict::passTurned : Verdict::pass;
}

void X11EventServices::switchOff(X11EventTap& tap, EventType waiting) {
    diagnostics_.line("⚠️ " + tap.toolId + " kept a " + nameOf(waiting) +
                      " waiting; it was passed on");
    tap.enabled = false;
    publishTaps();
    tap.callback(EventType::tapDisabledByTimeout, nullptr, tap.userInfo);
}

void X11EventServices::switchOffAll(EventType waiting) {
    for (const auto& tap : living()) {
        if (tap->wants(waiting)) {
            switchOff(*tap, waiting);
        }
    }
}

} // namespace quillon
