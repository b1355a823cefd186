#pragma once

#include <cstddef>

namespace quillon {

/// How many times operator new has been called in this program so far, on any thread. For programs
/// that link AllocationCount.cpp, which replaces it.
[[nodiscard]] std::size_t allocationCount();

} // namespace quillon
