#pragma once

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

/// The value that the writer program stores in its n-th write: of varying length, and such that a
/// mixture of two of them is none.
inline std::string writtenValue(int n) {
    const auto length = static_cast<std::size_t>(n) * 397 % 1009;
    return std::to_string(n) + ":" + std::string(length, static_cast<char>('a' + n % 26)) + ".";
}

/// The n of a complete value, or -1.
inline int writeThatGave(std::string_view value) {
    int n = -1;
    std::from_chars(value.data(), value.data() + value.size(), n);
    return n >= 0 && writtenValue(n) == value ? n : -1;
}

} // namespace quillon
