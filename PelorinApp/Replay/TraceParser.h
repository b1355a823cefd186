#pragma once

#include "Replay/Trace.h"

#include <string_view>
#include <variant>

namespace quillon {

/// Reads a trace's text. The error is the first one in the text, except that text which is not
/// UTF-8, or holds a NUL, is refused before anything else.
[[nodiscard]] std::variant<Trace, TraceError> parseTrace(std::string_view text);

} // namespace quillon
