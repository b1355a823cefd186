#include "Tools/Pointer/ThreeFingerTouchMonitor.h"

#include "Platform/Platform.h"

#include <utility>
#include <vector>

namespace quillon {

namespace {

/// The started monitor: the library's callback carries no context.
std::atomic<std::weak_ptr<ThreeFingerTouchMonitor>>& startedMonitor() {
    static std::atomic<std::weak_ptr<ThreeFingerTouchMonitor>> monitor;
    return monitor;
}

/// For what cannot be stopped: its thread goes on, so the code that it runs must stay.
void leaveOpen(std::unique_ptr<DynamicLibrary> library) {
    static auto& libraries = *new std::vector<std::unique_ptr<DynamicLibrary>>;
    libraries.push_back(std::move(library));
}

} // namespace

const std::shared_ptr<ThreeFingerTouchMonitor>& ThreeFingerTouchMonitor::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance =
        *new std::shared_ptr<ThreeFingerTouchMonitor>(std::make_shared<ThreeFingerTouchMonitor>(
            Platform::current().runLoop, Platform::current().libraries));
    return instance;
}

ThreeFingerTouchMonitor::ThreeFingerTouchMonitor(RunLoop& runLoop, DynamicLibraries& libraries)
    : runLoop_(runLoop), libraries_(libraries),
      stateQueue_(runLoop.makeSerialQueue("threefinger.touch.state")) {}

bool ThreeFingerTouchMonitor::load() {
    if (libHandle_) {
        return true;
    }
    libHandle_ = libraries_.open(touchLibraryPath);
    if (!libHandle_) {
        return false;
    }
    bool hasAll = true;
    const auto resolve = [&]<class Function>(Function& function, const char* symbol) {
        function = reinterpret_cast<Function>(libHandle_->resolve(symbol));
        hasAll = hasAll && function != nullptr;
    };
    resolve(createDefault_, "MTDeviceCreateDefault");
    resolve(registerCallback_, "MTRegisterContactFrameCallback");
    resolve(unregisterCallback_, "MTUnregisterContactFrameCallback");
    resolve(startDevice_, "MTDeviceStart");
    resolve(stopDevice_, "MTDeviceStop");
    return hasAll;
}

void ThreeFingerTouchMonitor::start() {
    if (isStarted_ || !load() || createDefault_ == nullptr || registerCallback_ == nullptr ||
        startDevice_ == nullptr) {
        return;
    }
    device_ = createDefault_();
    if (device_ == nullptr) {
        return;
    }
    storeContacts(0); // fingers that rest now are reported anew
    startedMonitor() = weak_from_this();
    registerCallback_(device_, &ThreeFingerTouchMonitor::contactFrame);
    startDevice_(device_, 0);
    isStarted_ = true;
}

void ThreeFingerTouchMonitor::stop() {
    if (!isStarted_) {
        return;
    }
    const bool canStop = unregisterCallback_ != nullptr && stopDevice_ != nullptr;
    if (canStop) {
        unregisterCallback_(device_, &ThreeFingerTouchMonitor::contactFrame);
        stopDevice_(device_);
    }
    device_ = nullptr;
    isStarted_ = false;
    hasLatched_ = false;
    if (canStop) {
        libHandle_.reset();
    } else {
        leaveOpen(std::move(libHandle_));
    }
    startedMonitor() = std::weak_ptr<ThreeFingerTouchMonitor>();
}

int ThreeFingerTouchMonitor::currentContactCount() const {
    int count = 0;
    stateQueue_->sync([&] { count = currentContacts_; });
    return count;
}

int ThreeFingerTouchMonitor::contactFrame(TouchDevice /*device*/, void* /*contacts*/,
                                          std::int32_t count, double /*timestamp*/,
                                          std::int32_t /*frame*/) {
    if (const auto monitor = startedMonitor().load().lock()) {
        monitor->storeContacts(count);
        monitor->hasLatched_ = count == threeContacts;
    }
    return 0;
}

void ThreeFingerTouchMonitor::storeContacts(int count) {
    stateQueue_->async([this, count] {
        const bool wereThree = std::exchange(currentContacts_, count) == threeContacts;
        if (wereThree == (count == threeContacts)) {
            return;
        }
        runLoop_.async([weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->reportThreeContacts();
            }
        });
    });
}

void ThreeFingerTouchMonitor::reportThreeContacts() {
    if (handler_) {
        handler_(hasThreeContacts());
    }
}

} // namespace quillon
