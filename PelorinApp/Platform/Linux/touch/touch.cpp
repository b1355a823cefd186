// What the library exports.

#include "Platform/Linux/touch/DefaultTouchDevice.h"
#include "Platform/Linux/touch/UdevTouchpads.h"
#include "Platform/TouchLibrary.h"

#include <type_traits>

namespace quillon {
namespace {

/// Is not destroyed, since a program may call us until its very end; only stopped.
union Storage {
    Storage() : device(&UdevTouchpads::make) {}
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;
    ~Storage() {}

    DefaultTouchDevice device;
};
Storage storage;

/// No thread may be left in code that is closed, or call a program that ends.
const struct AtTheEnd {
    AtTheEnd() = default;
    AtTheEnd(const AtTheEnd&) = delete;
    AtTheEnd& operator=(const AtTheEnd&) = delete;
    ~AtTheEnd() { storage.device.stop(); }
} atTheEnd;

DefaultTouchDevice* known(TouchDevice device) {
    return device == &storage.device ? &storage.device : nullptr;
}

} // namespace
} // namespace quillon

extern "C" {

#define QUILLON_EXPORT [[gnu::visibility("default")]]

QUILLON_EXPORT quillon::TouchDevice MTDeviceCreateDefault() noexcept {
    return quillon::storage.device.isUsable() ? &quillon::storage.device : nullptr;
}

QUILLON_EXPORT void
MTRegisterContactFrameCallback(quillon::TouchDevice device,
                               quillon::ContactFrameCallback callback) noexcept {
    if (auto* it = quillon::known(device)) {
        it->setCallback(callback);
    }
}

QUILLON_EXPORT void
MTUnregisterContactFrameCallback(quillon::TouchDevice device,
                                 quillon::ContactFrameCallback callback) noexcept {
    if (auto* it = quillon::known(device)) {
        it->removeCallback(callback);
    }
}

QUILLON_EXPORT void MTDeviceStart(quillon::TouchDevice device, int /*mode*/) noexcept {
    if (auto* it = quillon::known(device)) {
        it->start();
    }
}

QUILLON_EXPORT void MTDeviceStop(quillon::TouchDevice device) noexcept {
    if (auto* it = quillon::known(device)) {
        it->stop();
    }
}

} // extern "C"

static_assert(
    std::is_convertible_v<decltype(&MTDeviceCreateDefault), quillon::CreateDefaultTouchDevice>);
static_assert(std::is_convertible_v<decltype(&MTRegisterContactFrameCallback),
                                    quillon::ChangeContactFrameCallback>);
static_assert(std::is_convertible_v<decltype(&MTUnregisterContactFrameCallback),
                                    quillon::ChangeContactFrameCallback>);
static_assert(std::is_convertible_v<decltype(&MTDeviceStart), quillon::StartTouchDevice>);
static_assert(std::is_convertible_v<decltype(&MTDeviceStop), quillon::StopTouchDevice>);
