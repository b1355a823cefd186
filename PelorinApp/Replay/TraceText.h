#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillon {

/// Cuts a trace's text into lines without their ends, LF or CRLF; a byte-order mark at the start
/// is skipped. Throws a TraceError at a NUL and at what is not UTF-8.
[[nodiscard]] std::vector<std::string_view> traceLines(std::string_view text);

/// The column of the character at this byte of a line of valid UTF-8.
[[nodiscard]] int columnAt(std::string_view line, std::size_t offset);

} // namespace quillon
