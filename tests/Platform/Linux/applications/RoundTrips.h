#pragma once

namespace quillon {

/// How often this process has waited for an answer to something that it had sent: a poll to read
/// after a write. Of all its connections; the test uses one at a time.
[[nodiscard]] int roundTrips();

} // namespace quillon
