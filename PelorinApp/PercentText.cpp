#include "PercentText.h"

#include <array>
#include <charconv>

namespace quillon {

std::string percentText(double value) {
    std::array<char, 330> digits{}; // as many as the longest double has
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                      std::chars_format::fixed, 1);
    return {digits.data(), result.ptr};
}

} // namespace quillon
