#pragma once

#include <CoreGraphics/CGEventTypes.h>

CF_EXPORT CFTypeID CGEventGetTypeID();

/// An event of no type, at the pointer's place.
CF_EXPORT CGEventRef CGEventCreate(CGEventSourceRef source) CF_RETURNS_RETAINED;
CF_EXPORT CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type,
                                             CGPoint position,
                                             CGMouseButton button) CF_RETURNS_RETAINED;

CF_EXPORT CGEventType CGEventGetType(CGEventRef event);
CF_EXPORT void CGEventSetType(CGEventRef event, CGEventType type);

/// In points, from the main screen's top left.
CF_EXPORT CGPoint CGEventGetLocation(CGEventRef event);

CF_EXPORT std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
CF_EXPORT void CGEventSetIntegerValueField(CGEventRef event, CGEventField field,
                                           std::int64_t value);
CF_EXPORT double CGEventGetDoubleValueField(CGEventRef event, CGEventField field);
CF_EXPORT void CGEventSetDoubleValueField(CGEventRef event, CGEventField field, double value);

CF_EXPORT CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                                         CGEventTapOptions options, CGEventMask eventsOfInterest,
                                         CGEventTapCallBack callback,
                                         void* userInfo) CF_RETURNS_RETAINED;
CF_EXPORT void CGEventTapEnable(CFMachPortRef tap, bool enable);
CF_EXPORT bool CGEventTapIsEnabled(CFMachPortRef tap);

CF_EXPORT void CGEventPost(CGEventTapLocation location, CGEventRef event);
