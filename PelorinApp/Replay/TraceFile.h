#pragma once

#include <string>
#include <variant>

namespace quillon {

/// Why a trace could not be read, in words.
struct TraceFileError {
    std::string message;
};

/// The bytes of a trace file, which may be no larger than 16 MiB.
[[nodiscard]] std::variant<std::string, TraceFileError> readTraceFile(const std::string& path);

} // namespace quillon
