#pragma once

#include <cstdint>

namespace quillon {

/// What the events that this program posts carry in the field kCGEventSourceUserData, so that its
/// own monitors can tell them from the user's.
inline constexpr std::int64_t ownEventMark = 42;

} // namespace quillon
