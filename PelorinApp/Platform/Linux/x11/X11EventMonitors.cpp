#include "Platform/Linux/x11/X11EventMonitors.h"

#include "Platform/Linux/x11/MonitoredButton.h"
#include "Platform/Linux/x11/ScrollNotch.h"

#include <QMetaObject>

#include <iterator>
#include <utility>

namespace quillon {

namespace {

constexpr std::uint64_t downs = eventMask(EventType::leftMouseDown) |
                                eventMask(EventType::rightMouseDown) |
                                eventMask(EventType::otherMouseDown);
constexpr std::uint64_t ups = eventMask(EventType::leftMouseUp) |
                              eventMask(EventType::rightMouseUp) |
                              eventMask(EventType::otherMouseUp);
constexpr std::uint64_t scrolls = eventMask(EventType::scrollWheel);

CaughtPress pressOf(const RawButton& raw) {
    using Kind = CaughtPress::Kind;
    if (isWheelButton(raw.number)) {
        return {Kind::wheel, static_cast<std::uint16_t>(raw.number), raw.time};
    }
    return {Kind::left, raw.source, raw.time};
}

} // namespace

class X11EventMonitors::Monitor final : public EventMonitor {
  public:
    Monitor(std::weak_ptr<X11EventMonitors*> monitors, std::uint64_t mask, Handler handler)
        : monitors_(std::move(monitors)), mask_(mask), handler_(std::move(handler)) {}
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    ~Monitor() override {
        if (const auto monitors = monitors_.lock()) {
            (*monitors)->forgetRemoved();
        }
    }

    /// What it wants at present.
    [[nodiscard]] std::uint64_t mask() const { return isArmed ? mask_ : 0; }

    void tell(const MonitoredEvent& event) const {
        if ((mask() & eventMask(event.type)) != 0) {
            handler_(event);
        }
    }

    bool isArmed = true;
    std::function<void()> invalidated;

  private:
    std::weak_ptr<X11EventMonitors*> monitors_;
    std::uint64_t mask_;
    Handler handler_;
};

X11EventMonitors::X11EventMonitors(const OwnWindows& ownWindows, PostedEvents& postedEvents,
                                   CaughtPresses& caughtPresses)
    : ownWindows_(ownWindows), postedEvents_(postedEvents),
      verdicts_(caughtPresses, [this](const MonitoredEvent& event) { tell(event); }),
      self_(std::make_shared<X11EventMonitors*>(this)) {}

X11EventMonitors::~X11EventMonitors() { disconnect(); }

EventMonitorRef X11EventMonitors::addGlobalMonitor(std::uint64_t mask, Handler handler,
                                                   std::string_view /*owner*/) {
    if ((mask & (downs | ups | scrolls)) == 0 || !connect()) {
        return nullptr;
    }
    auto monitor = std::make_shared<Monitor>(self_, mask, std::move(handler));
    monitors_.push_back(monitor);
    selectWanted();
    return monitor;
}

void X11EventMonitors::setInvalidationHandler(EventMonitor& monitor,
                                              std::function<void()> handler) {
    static_cast<Monitor&>(monitor).invalidated = std::move(handler);
}

void X11EventMonitors::setArmed(EventMonitor& monitor, bool armed) {
    static_cast<Monitor&>(monitor).isArmed = armed;
    selectWanted();
}

bool X11EventMonitors::connect() {
    if (buttons_ && buttons_->isLost()) {
        connectionLost();
    }
    if (!buttons_) {
        buttons_ = RawButtons::open({.button = [this](const RawButton& raw) { heard(raw); },
                                     .lost = [this] { connectionLost(); }});
    }
    return buttons_ != nullptr;
}

void X11EventMonitors::disconnect() {
    if (buttons_) {
        std::exchange(buttons_, nullptr)->close();
    }
    verdicts_.clear();
}

/// Later, whoever has found it out: an owner must not be told in the midst of adding a monitor.
void X11EventMonitors::connectionLost() {
    disconnect();
    std::move(monitors_.begin(), monitors_.end(), std::back_inserter(lost_));
    monitors_.clear();
    QMetaObject::invokeMethod(
        &queue_, [this] { invalidateLost(); }, Qt::QueuedConnection);
}

void X11EventMonitors::invalidateLost() {
    for (const auto& each : std::exchange(lost_, {})) {
        const auto monitor = each.lock();
        if (monitor && monitor->invalidated) {
            std::exchange(monitor->invalidated, nullptr)();
        }
    }
}

void X11EventMonitors::selectWanted() {
    wanted_ = 0;
    for (const auto& each : monitors_) {
        if (const auto monitor = each.lock()) {
            wanted_ |= monitor->mask();
        }
    }
    if (!buttons_) {
        return;
    }
    const bool hadPresses = buttons_->arePressesSelected();
    const bool hadReleases = buttons_->areReleasesSelected();
    buttons_->select((wanted_ & (downs | scrolls)) != 0, (wanted_ & ups) != 0);
    // What was posted until now did not come here.
    if (!hadPresses && buttons_->arePressesSelected()) {
        postedEvents_.forget(true);
    }
    if (!hadReleases && buttons_->areReleasesSelected()) {
        postedEvents_.forget(false);
    }
}

void X11EventMonitors::heard(const RawButton& raw) {
    if (postedEvents_.claim(raw.physical, raw.isDown)) {
        return;
    }
    // Programs read scrolling from the axes, which are numbered by nobody.
    const auto event = monitoredButton(raw.isOfAxis ? raw.physical : raw.number, raw.isDown);
    if (!event) {
        return;
    }
    // The release of a left press that was consumed is known by that press.
    const bool decidesAnother = event->type == EventType::leftMouseDown &&
                                (wanted_ & eventMask(EventType::leftMouseUp)) != 0;
    if (((wanted_ & eventMask(event->type)) != 0 || decidesAnother) &&
        !goesToThisProgram(raw, event->type)) {
        verdicts_.add({*event, raw.source, pressOf(raw)});
    }
}

bool X11EventMonitors::goesToThisProgram(const RawButton& raw, EventType type) {
    PointerTarget& target = buttons_->target();
    return ownWindows_.contains(type == EventType::scrollWheel ? target.recentWindow(raw.master)
                                                               : target.window(raw.master));
}

void X11EventMonitors::tell(const MonitoredEvent& event) {
    ++telling_;
    // Handlers add some, which have not heard of it, and remove some, whose places stay meanwhile.
    for (std::size_t i = 0, count = monitors_.size(); i < count && i < monitors_.size(); ++i) {
        if (const auto monitor = monitors_[i].lock()) {
            monitor->tell(event);
        }
    }
    --telling_;
    if (std::exchange(wereSomeRemoved_, false)) {
        forgetRemoved();
    }
}

void X11EventMonitors::forgetRemoved() {
    if (telling_ > 0) {
        wereSomeRemoved_ = true;
        return;
    }
    std::erase_if(monitors_, [](const auto& monitor) { return monitor.expired(); });
    if (monitors_.empty()) {
        disconnect();
    } else {
        selectWanted();
    }
}

} // namespace quillon
