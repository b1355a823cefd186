#pragma once

#include <string>

namespace quillon {

/// With one decimal and a point before it, whatever the user's locale writes there.
[[nodiscard]] std::string percentText(double value);

} // namespace quillon
