#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quillon {

/// What a person who wrote `word` may have meant, as "; did you mean …?", or nothing when none of
/// the candidates is near.
[[nodiscard]] std::string nearestWordHint(std::string_view word,
                                          std::span<const std::string_view> candidates);

} // namespace quillon
