#include "Tools/Pointer/PointText.h"

#include <array>
#include <charconv>

namespace quillon {

namespace {

/// The fewest digits that say which number it is, and at least one behind the point.
std::string numberText(double number) {
    std::array<char, 512> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    std::string shortest(text.data(), end);
    return shortest.find('.') == std::string::npos ? shortest + ".0" : shortest;
}

} // namespace

std::string pointText(Point point) {
    return '(' + numberText(point.x) + ", " + numberText(point.y) + ')';
}

} // namespace quillon
