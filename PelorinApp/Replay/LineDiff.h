#pragma once

#include <span>
#include <string>
#include <vector>

namespace quillon {

/// The difference of two texts as hunks of a unified diff without the file names above them, or
/// nothing when they are equal. `firstExpectedLine` is the number of the first expected line in
/// its file.
[[nodiscard]] std::vector<std::string> unifiedDiff(std::span<const std::string> expected,
                                                   std::span<const std::string> actual,
                                                   int firstExpectedLine);

} // namespace quillon
