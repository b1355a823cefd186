#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The JSON text with 0 and blanks in place of each number that is too large for a double, at the
/// same length. The parser gives a whole text up for one such number.
[[nodiscard]] std::string withoutOverflowingNumbers(std::string_view text);

} // namespace quillon
