#pragma once

#include <CoreFoundation/CFCGTypes.h>
#include <Foundation/NSObjCRuntime.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

typedef struct NSEdgeInsets {
    CGFloat top;
    CGFloat left;
    CGFloat bottom;
    CGFloat right;
} NSEdgeInsets;

typedef NS_ENUM(NSUInteger, NSRectEdge) {
    NSRectEdgeMinX = 0,
    NSRectEdgeMinY = 1,
    NSRectEdgeMaxX = 2,
    NSRectEdgeMaxY = 3,
    NSMinXEdge = NSRectEdgeMinX,
    NSMinYEdge = NSRectEdgeMinY,
    NSMaxXEdge = NSRectEdgeMaxX,
    NSMaxYEdge = NSRectEdgeMaxY,
};

FOUNDATION_EXPORT const NSPoint NSZeroPoint;
FOUNDATION_EXPORT const NSSize NSZeroSize;
FOUNDATION_EXPORT const NSRect NSZeroRect;

inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return {x, y}; }
inline NSSize NSMakeSize(CGFloat w, CGFloat h) { return {w, h}; }
inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) { return {{x, y}, {w, h}}; }
inline CGFloat NSMinX(NSRect aRect) { return aRect.origin.x; }
inline CGFloat NSMinY(NSRect aRect) { return aRect.origin.y; }
inline CGFloat NSWidth(NSRect aRect) { return aRect.size.width; }
inline CGFloat NSHeight(NSRect aRect) { return aRect.size.height; }
inline CGFloat NSMaxX(NSRect aRect) { return aRect.origin.x + aRect.size.width; }
inline CGFloat NSMaxY(NSRect aRect) { return aRect.origin.y + aRect.size.height; }

FOUNDATION_EXPORT BOOL NSMouseInRect(NSPoint aPoint, NSRect aRect, BOOL flipped);
FOUNDATION_EXPORT BOOL NSPointInRect(NSPoint aPoint, NSRect aRect);
