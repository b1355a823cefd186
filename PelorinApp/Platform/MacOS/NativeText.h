#pragma once

#include "Platform/MacOS/NSStrings.h"

#include <string_view>

namespace quillon {

/// For what has to have a text: empty where nativeString() is null.
inline NSString* nativeText(std::string_view text) {
    NSString* const made = nativeString(text);
    return made == nil ? @"" : made;
}

} // namespace quillon
