#pragma once

#include <CoreFoundation/CoreFoundation.h>

inline CGPoint CGPointMake(CGFloat x, CGFloat y) { return {x, y}; }
inline CGSize CGSizeMake(CGFloat width, CGFloat height) { return {width, height}; }
inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}

CF_EXPORT CFDictionaryRef CGRectCreateDictionaryRepresentation(CGRect rect);

/// False when the dictionary describes no rectangle.
CF_EXPORT bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rect);
