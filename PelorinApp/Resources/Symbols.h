#pragma once

#include <QString>

#include <string_view>

namespace quillon {

/// Where the drawing of a symbol is, compiled into the program: an SVG image in the colour
/// currentColor, on a square. Empty for a name that is no symbol's.
[[nodiscard]] QString symbolDrawing(std::string_view name);

} // namespace quillon
