#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace quillon {

/// Null when the text is no UTF-8.
[[nodiscard]] NSString* nativeString(std::string_view text);

/// Empty for null.
[[nodiscard]] std::string utf8Text(NSString* string);

} // namespace quillon
