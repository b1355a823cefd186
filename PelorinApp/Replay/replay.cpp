#include "Replay/replay.h"

#include "Replay/LineDiff.h"
#include "Replay/ReplayTools.h"
#include "Replay/TraceFile.h"
#include "Replay/TraceParser.h"
#include "Replay/TraceRunner.h"

#include <span>
#include <variant>
#include <vector>

namespace quillon {

namespace {

void printLines(std::ostream& out, std::span<const std::string> lines) {
    for (const std::string& line : lines) {
        out << line << '\n';
    }
}

int reportError(const std::string& file, const TraceError& error, std::ostream& err) {
    err << file << ':' << error.position.line << ':' << error.position.column << ": "
        << error.message << '\n';
    return replayInvalid;
}

int compare(const std::string& file, const ExpectedOutput& expected,
            std::span<const std::string> actual, std::ostream& out) {
    const auto diff = unifiedDiff(expected.lines, actual, expected.firstLine);
    if (diff.empty()) {
        return replayEqual;
    }
    out << "--- " << file << " (expected)\n+++ " << file << " (replayed)\n";
    printLines(out, diff);
    return replayDifferent;
}

int replayTrace(const std::string& file, const Trace& trace, bool check, std::ostream& out,
                std::ostream& err) {
    if (const auto error = checkProperties(trace)) {
        return reportError(file, *error, err);
    }
    if (!check) {
        printLines(out, runTrace(trace));
        return replayEqual;
    }
    if (!trace.expected) {
        err << file << ": no expected output to compare with: a line ---- is missing\n";
        return replayInvalid;
    }
    return compare(file, *trace.expected, runTrace(trace), out);
}

} // namespace

int replayCommand(const std::string& file, bool check, std::ostream& out, std::ostream& err) {
    const auto text = readTraceFile(file);
    if (const auto* error = std::get_if<TraceFileError>(&text)) {
        err << file << ": " << error->message << '\n';
        return replayInvalid;
    }
    const auto parsed = parseTrace(std::get<std::string>(text));
    if (const auto* error = std::get_if<TraceError>(&parsed)) {
        return reportError(file, *error, err);
    }
    const int result = replayTrace(file, std::get<Trace>(parsed), check, out, err);
    if (!out.flush()) {
        err << file << ": its output cannot be written\n";
        return replayInvalid;
    }
    return result;
}

} // namespace quillon
