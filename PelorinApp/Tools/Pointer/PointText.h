#pragma once

#include "Platform/Geometry.h"

#include <string>

namespace quillon {

/// As diagnostics show a place: `(3.0, 450.5)`, whatever the locale.
[[nodiscard]] std::string pointText(Point point);

} // namespace quillon
