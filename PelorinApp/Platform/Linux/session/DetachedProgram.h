#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Starts a program, found in $PATH, that goes its own way: nothing of what this process has
/// arranged for itself comes with it, neither blocked and ignored signals nor open files nor the
/// terminal, and its output goes nowhere. Returns once it runs; answers what went wrong.
///
/// `words` are its name and arguments, `environment` holds NAME=VALUE texts.
[[nodiscard]] std::optional<std::string> startDetached(std::vector<std::string> words,
                                                       std::vector<std::string> environment);

} // namespace quillon
