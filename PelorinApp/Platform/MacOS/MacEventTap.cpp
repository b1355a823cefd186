#include "Platform/MacOS/MacEventTap.h"

#include "Platform/MacOS/MacEvent.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace quillon {

namespace {

/// The ports whose end somebody wants to hear of. A tap's port has no room for a pointer of ours,
/// and it becomes invalid on a thread of the system's own.
class WatchedPorts {
  public:
    struct Watch {
        CFMachPortRef port;
        std::weak_ptr<MacEventTap> tap;
        RunLoop* runLoop;
    };

    /// Never destroyed: taps of whatever the process shares may go after all else.
    static WatchedPorts& shared() {
        static auto& ports = *new WatchedPorts;
        return ports;
    }

    void add(Watch watch) {
        const std::lock_guard lock(mutex_);
        erase(watch.port);
        watches_.push_back(std::move(watch));
    }

    void remove(CFMachPortRef port) {
        const std::lock_guard lock(mutex_);
        erase(port);
    }

    [[nodiscard]] std::optional<Watch> find(CFMachPortRef port) {
        const std::lock_guard lock(mutex_);
        const auto found = std::ranges::find(watches_, port, &Watch::port);
        return found == watches_.end() ? std::nullopt : std::optional(*found);
    }

  private:
    void erase(CFMachPortRef port) {
        std::erase_if(watches_, [port](const Watch& watch) { return watch.port == port; });
    }

    std::mutex mutex_;
    std::vector<Watch> watches_;
};

} // namespace

std::shared_ptr<MacEventTap> MacEventTap::create(CGEventTapLocation location,
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
    WatchedPorts::shared().remove(port_.get());
    // Whatever else still refers to the port, no event may come for what is gone.
    CFMachPortInvalidate(port_.get());
}

void MacEventTap::setInvalidationHandler(RunLoop& runLoop, std::function<void()> handler) {
    invalidated_ = std::move(handler);
    WatchedPorts::shared().add({port_.get(), weak_from_this(), &runLoop});
    CFMachPortSetInvalidationCallBack(port_.get(), &MacEventTap::portInvalidated);
}

void MacEventTap::portInvalidated(CFMachPortRef port, void* /*info*/) noexcept {
    const auto watch = WatchedPorts::shared().find(port);
    if (!watch) {
        return;
    }
    watch->runLoop->async([weak = watch->tap] {
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
