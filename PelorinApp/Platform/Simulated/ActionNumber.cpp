#include "Platform/Simulated/ActionNumber.h"

#include <array>
#include <charconv>

namespace quillon {

namespace {
constexpr int significantDigits = 6; // what %g shows
} // namespace

std::string actionNumber(double value) {
    std::array<char, 32> text{};
    const double shown = value == 0 ? 0.0 : value;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), shown,
                                            std::chars_format::general, significantDigits);
    return {text.data(), end};
}

} // namespace quillon
