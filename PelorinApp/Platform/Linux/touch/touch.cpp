// What the library exports.

#include "Platform/Linux/touch/DefaultTouchDevice.h"
#include "Platform/Linux/touch/UdevTouchpads.h"
#include "Platform/TouchLibrary.h"

#include <array>
#include <cstddef>
#include <new>
#include <type_traits>

namespace quillon {
namespace {

alignas(DefaultTouchDevice) std::array<std::byte, sizeof(DefaultTouchDevice)> place;
/// Is not destroyed, since a program may call us until its very end; only stopped.
DefaultTouchDevice& theDevice = *new (place.data()) DefaultTouchDevice(&UdevTouchpads::make);

/// No thread may be left in code that is closed, or call a program that ends.
const struct AtTheEnd {
    AtTheEnd() = default;
    AtTheEnd(const AtTheEnd&) = delete;
    AtTheEnd& operator=(const AtTheEnd&) = delete;
    ~AtTheEnd() { theDevice.stop(); }
} atTheEnd;

DefaultTouchDevice* known(TouchDevice device) {
    return device == &theDevice ? &theDevice : nullptr;
}

} // namespace
} // namespace quillon

extern "C" {

quillon::TouchDevice MTDeviceCreateDefault() noexcept {
    return quillon::theDevice.isUsable() ? &quillon::theDevice : nullptr;
}

void MTRegisterContactFrameCallback(quillon::TouchDevice device,
                                    quillon::ContactFrameCallback callback) noexcept {
    if (auto* it = quillon::known(device)) {
        it->setCallback(callback);
    }
}

void MTUnregisterContactFrameCallback(quillon::TouchDevice device,
                                      quillon::ContactFrameCallback callback) noexcept {
    if (auto* it = quillon::known(device)) {
        it->removeCallback(callback);
    }
}

void MTDeviceStart(quillon::TouchDevice device, int /*mode*/) noexcept {
    if (auto* it = quillon::known(device)) {
        it->start();
    }
}

void MTDeviceStop(quillon::TouchDevice device) noexcept {
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
