#pragma once

#include "Replay/TraceParser.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace quillon {

/// The trace of a text that has to parse.
inline Trace parsed(std::string_view text) {
    auto result = parseTrace(text);
    if (const auto* error = std::get_if<TraceError>(&result)) {
        ADD_FAILURE() << error->position.line << ':' << error->position.column << ": "
                      << error->message;
        return {};
    }
    return std::get<Trace>(std::move(result));
}

/// The first statement with a time of a text that has to parse, as the alternative that it is.
template <class Action>
Action firstAction(std::string_view text) {
    const Trace trace = parsed(text);
    if (trace.actions.empty() || !std::holds_alternative<Action>(trace.actions.front().action)) {
        ADD_FAILURE() << "not the expected statement: " << text;
        return {};
    }
    return std::get<Action>(trace.actions.front().action);
}

/// `LINE:COLUMN: message` for a text that does not parse.
inline std::string fault(std::string_view text) {
    const auto result = parseTrace(text);
    const auto* error = std::get_if<TraceError>(&result);
    if (error == nullptr) {
        return "no fault";
    }
    return std::to_string(error->position.line) + ':' + std::to_string(error->position.column) +
           ": " + error->message;
}

} // namespace quillon
