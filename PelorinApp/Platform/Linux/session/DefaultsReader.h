#pragma once

#include "Platform/Linux/session/DefaultsDocument.h"

#include <optional>
#include <string_view>

namespace quillon {

/// Reads the members of the JSON object in `text`; of members with the same key the last counts.
[[nodiscard]] std::optional<DefaultsDamage> readDefaults(std::string_view text,
                                                         DefaultsDocument::Values& values);

} // namespace quillon
