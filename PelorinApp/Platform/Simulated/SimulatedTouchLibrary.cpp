#include "Platform/Simulated/SimulatedTouchLibrary.h"

#include <array>
#include <utility>

namespace quillon {

namespace {

SimulatedTouchLibrary* openedLast = nullptr;

SimulatedTouchLibrary& trackpad(TouchDevice device) {
    return *static_cast<SimulatedTouchLibrary*>(device);
}

} // namespace

class SimulatedTouchLibrary::Library final : public DynamicLibrary {
  public:
    explicit Library(SimulatedTouchLibrary& trackpad) : trackpad_(trackpad) { ++trackpad.opened_; }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() override { ++trackpad_.closed_; }

    [[nodiscard]] void* resolve(const char* symbol) const override {
        const std::array<std::pair<std::string_view, void*>, 5> exported{{
            {"MTDeviceCreateDefault", reinterpret_cast<void*>(&createDefault)},
            {"MTRegisterContactFrameCallback", reinterpret_cast<void*>(&registerCallback)},
            {"MTUnregisterContactFrameCallback", reinterpret_cast<void*>(&unregisterCallback)},
            {"MTDeviceStart", reinterpret_cast<void*>(&SimulatedTouchLibrary::start)},
            {"MTDeviceStop", reinterpret_cast<void*>(&SimulatedTouchLibrary::stop)},
        }};
        for (const auto& [name, address] : exported) {
            if (name == symbol && !trackpad_.missingSymbols.contains(name)) {
                return address;
            }
        }
        return nullptr;
    }

  private:
    SimulatedTouchLibrary& trackpad_;
};

SimulatedTouchLibrary::~SimulatedTouchLibrary() {
    if (openedLast == this) {
        openedLast = nullptr;
    }
}

std::unique_ptr<DynamicLibrary> SimulatedTouchLibrary::open(std::string_view path) {
    if (!isInstalled || path != touchLibraryPath) {
        return nullptr;
    }
    openedLast = this;
    return std::make_unique<Library>(*this);
}

void SimulatedTouchLibrary::touch(int contacts) {
    contacts_ = contacts;
    if (started_) {
        sendFrame();
    }
}

void SimulatedTouchLibrary::sendFrame() {
    if (callback_ != nullptr) {
        callback_(this, nullptr, contacts_, 0, ++frames_);
    }
}

TouchDevice SimulatedTouchLibrary::createDefault() {
    return openedLast != nullptr && openedLast->hasDevice ? openedLast : nullptr;
}

void SimulatedTouchLibrary::registerCallback(TouchDevice device, ContactFrameCallback callback) {
    trackpad(device).callback_ = callback;
}

void SimulatedTouchLibrary::unregisterCallback(TouchDevice device, ContactFrameCallback callback) {
    if (trackpad(device).callback_ == callback) {
        trackpad(device).callback_ = nullptr;
    }
}

void SimulatedTouchLibrary::start(TouchDevice device, int mode) {
    if (mode != 0) {
        return;
    }
    trackpad(device).started_ = true;
    if (trackpad(device).contacts_ > 0) {
        trackpad(device).sendFrame(); // fingers that were there before
    }
}

void SimulatedTouchLibrary::stop(TouchDevice device) { trackpad(device).started_ = false; }

} // namespace quillon
