#include "Platform/MacOS/MacEventTap.h"

#include "Platform/MacOS/MacEvent.h"

#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace quillon {

namespace {

/// Whose taps the ports are. A tap's port has no room for a pointer of ours, and it becomes invalid
/// on a thread of the system's own.
class TapsOfPorts {
  public:
    struct Entry {
        std::weak_ptr<MacEventTap> tap;
        RunLoop* runLoop;
    };

    /// Never destroyed: taps of whatever the process shares may go after all else.
    static TapsOfPorts& shared() {
        static auto& taps = *new TapsOfPorts;
        return taps;
    }

    void add(CFMachPortRef port, Entry entry) {
        const std::lock_guard lock(mutex_);
        entries_.emplace(port, std::move(entry));
    }

    void remove(CFMachPortRef port) {
        const std::lock_guard lock(mutex_);
        entries_.erase(port);
    }

    [[nodiscard]] std::optional<Entry> find(CFMachPortRef port) {
        const std::lock_guard lock(mutex_);
        const auto found = entries_.find(port);
        return found == entries_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    std::mutex mutex_;
    std::map<CFMachPortRef, Entry> entries_;
};

} // namespace

std::shared_ptr<MacEventTap> MacEventTap::create(RunLoop& runLoop, CGEventTapLocation location,
                                                 CGEventTapPlacement placement,
                                                 CGEventTapOptions options,
                                                 CGEventMask eventsOfInterest,
                                                 EventTapCallback callback, void* userInfo) {
    auto tap = std::make_shared<MacEventTap>(callback, userInfo);
    tap->port_ = CfOwned(CGEventTapCreate(location, placement, options, eventsOfInterest,
                                          &MacEventTap::answer, tap.get()));
    if (!tap->port_) {
        return nullptr;
    }
    TapsOfPorts::shared().add(tap->port(), {tap, &runLoop});
    // The system makes taps that are on. Until its source is on a run loop nobody would answer, and
    // the user's input would wait for the time-out.
    tap->enable(false);
    return tap;
}

MacEventTap::~MacEventTap() {
    if (!port_) {
        return;
    }
    // The owner knows that it lets go: only then may the port end.
    CFMachPortSetInvalidationCallBack(port_.get(), nullptr);
    TapsOfPorts::shared().remove(port_.get());
    // Whatever else still refers to the port, no event may come for what is gone.
    CFMachPortInvalidate(port_.get());
}

void MacEventTap::setInvalidationHandler(std::function<void()> handler) {
    invalidated_ = std::move(handler);
    CFMachPortSetInvalidationCallBack(port_.get(), &MacEventTap::portInvalidated);
}

void MacEventTap::portInvalidated(CFMachPortRef port, void* /*info*/) noexcept {
    const auto entry = TapsOfPorts::shared().find(port);
    if (!entry) {
        return;
    }
    entry->runLoop->async([weak = entry->tap] {
        const auto tap = weak.lock(); // the handler may let go of the tap
        if (tap && tap->invalidated_) {
            std::exchange(tap->invalidated_, nullptr)();
        }
    });
}

CGEventRef MacEventTap::answer(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event,
                               void* context) noexcept {
    // Whoever is asked may let go of the tap: nothing of it is read afterwards.
    const auto* tap = static_cast<const MacEventTap*>(context);
    if (tap == nullptr || tap->callback_ == nullptr) {
        return event;
    }
    const auto known = static_cast<EventType>(type);
    try {
        if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
            tap->callback_(known, nullptr, tap->userInfo_);
            return event;
        }
        if (event == nullptr) {
            return event;
        }
        MacEvent asked(event);
        return tap->callback_(known, &asked, tap->userInfo_) == nullptr ? nullptr : event;
    } catch (...) {
        // The user's input is not lost to a failure of ours, and none may reach the system's code.
        return event;
    }
}

} // namespace quillon
