#pragma once

#include <cstdint>

namespace quillon {

/// What a touch library exports, under the names that stand beside each, and the path that it is
/// opened by. Its functions may be called on any one thread.
extern "C" {

using TouchDevice = void*;

/// Called for frames of contacts on the library's own thread: for each, or at least for those in
/// which their number changes. `contacts` are records of the library's own shape, or null;
/// `timestamp` is in seconds. What it returns is of no meaning.
using ContactFrameCallback = int (*)(TouchDevice device, void* contacts, std::int32_t count,
                                     double timestamp, std::int32_t frame);

/// "MTDeviceCreateDefault": null when there is no device.
using CreateDefaultTouchDevice = TouchDevice (*)();

/// "MTRegisterContactFrameCallback" and "MTUnregisterContactFrameCallback".
using ChangeContactFrameCallback = void (*)(TouchDevice device, ContactFrameCallback callback);

/// "MTDeviceStart": frames come from now on; fingers that rest already give one, too. `mode` is 0.
using StartTouchDevice = void (*)(TouchDevice device, int mode);

/// "MTDeviceStop": no frame comes once it has returned.
using StopTouchDevice = void (*)(TouchDevice device);

} // extern "C"

inline constexpr const char* touchLibraryPath =
    "/System/Library/PrivateFrameworks/MultitouchSupport.framework/MultitouchSupport";

} // namespace quillon
