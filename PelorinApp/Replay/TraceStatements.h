#pragma once

#include "Replay/StatementReader.h"

#include <span>
#include <string_view>

namespace quillon {

/// Reads what follows the name of a timed statement. Null for a name that no timed statement has.
using ReadAction = TraceAction (*)(StatementReader&);
[[nodiscard]] ReadAction timedStatement(std::string_view name);

/// The names of all timed statements, for hints.
[[nodiscard]] std::span<const std::string_view> timedStatementNames();

} // namespace quillon
