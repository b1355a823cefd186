#pragma once

#include <string>

namespace quillon {

/// A number as actions show it: the `%g` form whatever the process's locale, negative zero as 0.
[[nodiscard]] std::string actionNumber(double value);

} // namespace quillon
