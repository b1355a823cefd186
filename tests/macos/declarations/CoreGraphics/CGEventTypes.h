#pragma once

#include <CoreFoundation/CoreFoundation.h>

using CGEventRef = struct __CGEvent*;
using CGEventSourceRef = struct __CGEventSource*;
using CGEventMask = std::uint64_t;

typedef CF_ENUM(std::uint32_t, CGMouseButton) {
    kCGMouseButtonLeft = 0,
    kCGMouseButtonRight = 1,
    kCGMouseButtonCenter = 2,
};

typedef CF_ENUM(std::uint32_t, CGEventType) {
    kCGEventNull = 0,
    kCGEventLeftMouseDown = 1,
    kCGEventLeftMouseUp = 2,
    kCGEventRightMouseDown = 3,
    kCGEventRightMouseUp = 4,
    kCGEventScrollWheel = 22,
    kCGEventOtherMouseDown = 25,
    kCGEventOtherMouseUp = 26,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};

typedef CF_ENUM(std::uint32_t, CGEventField) {
    kCGMouseEventButtonNumber = 3,
    kCGScrollWheelEventDeltaAxis1 = 11,
    kCGScrollWheelEventDeltaAxis2 = 12,
    kCGEventSourceUserData = 42,
    kCGScrollWheelEventIsContinuous = 88,
    kCGScrollWheelEventFixedPtDeltaAxis1 = 93,
    kCGScrollWheelEventFixedPtDeltaAxis2 = 94,
    kCGScrollWheelEventPointDeltaAxis1 = 96,
    kCGScrollWheelEventPointDeltaAxis2 = 97,
    kCGScrollWheelEventScrollPhase = 99,
    kCGScrollWheelEventMomentumPhase = 123,
};

typedef CF_ENUM(std::uint32_t, CGEventTapLocation) {
    kCGHIDEventTap = 0,
    kCGSessionEventTap = 1,
    kCGAnnotatedSessionEventTap = 2,
};

typedef CF_ENUM(std::uint32_t, CGEventTapPlacement) {
    kCGHeadInsertEventTap = 0,
    kCGTailAppendEventTap = 1,
};

typedef CF_ENUM(std::uint32_t, CGEventTapOptions) {
    kCGEventTapOptionDefault = 0,
    kCGEventTapOptionListenOnly = 1,
};

using CGEventTapProxy = struct __CGEventTapProxy*;

/// Returns the event to pass on, or null to consume it.
using CGEventTapCallBack = CGEventRef (*)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                          void* userInfo);
