#include "Platform/Linux/session/OverflowingNumbers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace quillon {

namespace {

constexpr std::string_view digits = "0123456789";

/// Removes the digits at the front and says how many there were.
std::size_t skipDigits(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of(digits), text.size());
    text.remove_prefix(count);
    return count;
}

bool skipOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

bool isJsonNumber(std::string_view text) {
    skipOneOf(text, "-");
    if (!skipOneOf(text, "0") && skipDigits(text) == 0) {
        return false;
    }
    if (skipOneOf(text, ".") && skipDigits(text) == 0) {
        return false;
    }
    if (skipOneOf(text, "eE")) {
        skipOneOf(text, "+-");
        if (skipDigits(text) == 0) {
            return false;
        }
    }
    return text.empty();
}

bool overflows(std::string_view number) {
    // Without an exponent it takes more digits than this to leave the range.
    const bool canOverflow = number.size() > std::numeric_limits<double>::max_exponent10 ||
                             number.find_first_of("eE") != std::string_view::npos;
    return canOverflow && isJsonNumber(number) && !nlohmann::json::accept(number);
}

} // namespace

std::string withoutOverflowingNumbers(std::string_view text) {
    std::string result(text);
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString && c == '\\') {
            ++i;
        } else if (c == '"') {
            inString = !inString;
        } else if (!inString && (c == '-' || digits.find(c) != std::string_view::npos)) {
            const std::size_t end =
                std::min(text.find_first_not_of("0123456789+-.eE", i), text.size());
            if (overflows(text.substr(i, end - i))) {
                std::fill(result.begin() + static_cast<std::ptrdiff_t>(i),
                          result.begin() + static_cast<std::ptrdiff_t>(end), ' ');
                result[i] = '0';
            }
            i = end - 1;
        }
    }
    return result;
}

} // namespace quillon
