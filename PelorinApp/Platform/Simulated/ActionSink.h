#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillon {

/// Receives what the simulated desktop saw happen: a kind ("script", "tap", …) and the rest of the
/// action in words, perhaps empty.
using ActionSink = std::function<void(std::string_view kind, std::string detail)>;

} // namespace quillon
