#include "Replay/ReplayTools.h"
#include "Replay/TraceParser.h"
#include "Replay/TraceRunner.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

namespace {

/// Longer runs only tick more often, so they would take time and find nothing.
constexpr quillon::VirtualRunLoop::Microseconds longestRun = 60'000'000;
constexpr std::size_t longestMessage = 1000;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void checkError(const quillon::TraceError& error, std::string_view text) {
    require(error.position.line >= 1 && error.position.column >= 1);
    require(static_cast<std::size_t>(error.position.line) <= text.size() + 1);
    require(static_cast<std::size_t>(error.position.column) <= text.size() + 1);
    require(!error.message.empty() && error.message.size() < longestMessage);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto result = quillon::parseTrace(text);
    if (const auto* error = std::get_if<quillon::TraceError>(&result)) {
        checkError(*error, text);
        return 0;
    }
    const auto& trace = std::get<quillon::Trace>(result);
    require(trace.actions.empty() || trace.actions.back().time <= trace.end);
    if (const auto error = quillon::checkProperties(trace)) {
        checkError(*error, text);
    } else if (trace.end <= longestRun) {
        require(quillon::runTrace(trace) == quillon::runTrace(trace));
    }
    return 0;
}
