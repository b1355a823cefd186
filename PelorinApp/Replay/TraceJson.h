#pragma once

#include "Platform/UserDefaults.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace quillon {

struct JsonFault {
    std::size_t offset = 0; // in bytes, at most the text's length
    std::string message;
};

/// A JSON text as the object that a store of settings would hold. A number that a double cannot
/// hold, such as 1e999, is a fault; so is nesting without measure.
[[nodiscard]] std::variant<DefaultsObject, JsonFault> objectFromJson(std::string_view text);

} // namespace quillon
