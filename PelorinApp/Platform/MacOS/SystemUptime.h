#pragma once

namespace quillon {

/// Seconds for which the system has been awake since it was started.
[[nodiscard]] double systemUptime();

} // namespace quillon
