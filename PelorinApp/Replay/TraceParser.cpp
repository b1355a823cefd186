#include "Replay/TraceParser.h"

#include "Replay/StatementReader.h"
#include "Replay/TraceSetup.h"
#include "Replay/TraceStatements.h"
#include "Replay/TraceText.h"
#include "Replay/TraceTime.h"

#include <utility>

namespace quillon {

namespace {

using Microseconds = VirtualRunLoop::Microseconds;

constexpr std::string_view separator = "----";
constexpr Microseconds timeAfterLastStatement = 3'000'000;

bool isSeparator(std::string_view line) {
    return line.starts_with(separator) &&
           line.find_first_not_of(" \t", separator.size()) == std::string_view::npos;
}

/// A word that can only be meant as a time.
bool looksLikeTime(const TraceWord& word) {
    const char first = word.text.empty() ? '\0' : word.text[0];
    return !word.quoted &&
           ((first >= '0' && first <= '9') || first == '+' || first == '-' || first == '.');
}

class TraceParser {
  public:
    Trace parse(std::string_view text);

  private:
    void parseLine(StatementReader reader);
    void parseTimed(StatementReader& reader, const TraceWord& time);

    Trace trace_;
    TraceSetup setup_{trace_};
    Microseconds time_ = 0;
    bool isTimed_ = false; // the description of the start is over
    bool ended_ = false;
};

void TraceParser::parseTimed(StatementReader& reader, const TraceWord& time) {
    if (ended_) {
        reader.fail(time, "nothing can happen after the end");
    }
    time_ = statementTime(reader, time, time_);
    isTimed_ = true;
    const TraceWord name = reader.word("a statement");
    if (name.text == "end" && !name.quoted) {
        reader.finish();
        ended_ = true;
        return;
    }
    const ReadAction read = name.quoted ? nullptr : timedStatement(name.text);
    if (read == nullptr && !name.quoted && TraceSetup::knows(name.text)) {
        reader.fail(name, inQuotes(name.text) + " describes the start and has no time");
    }
    if (read == nullptr) {
        reader.failUnknown(name, "statement", timedStatementNames());
    }
    trace_.actions.push_back({time_, read(reader)});
}

void TraceParser::parseLine(StatementReader reader) {
    const auto first = reader.nextWord();
    if (!first) {
        return;
    }
    if (looksLikeTime(*first)) {
        parseTimed(reader, *first);
        return;
    }
    if (isTimed_ && !first->quoted && TraceSetup::knows(first->text)) {
        reader.fail(*first, inQuotes(first->text) + " without a time describes the start and " +
                                "must stand before the first timed statement");
    }
    setup_.read(reader, *first);
}

Trace TraceParser::parse(std::string_view text) {
    const std::vector<std::string_view> lines = traceLines(text);
    int number = 1;
    for (auto line = lines.begin(); line != lines.end(); ++line, ++number) {
        if (isSeparator(*line)) {
            trace_.expected = ExpectedOutput{number + 1, {line + 1, lines.end()}};
            while (!trace_.expected->lines.empty() && trace_.expected->lines.back().empty()) {
                trace_.expected->lines.pop_back();
            }
            break;
        }
        parseLine(StatementReader(*line, number));
    }
    trace_.end = ended_ ? time_ : time_ + timeAfterLastStatement;
    return std::move(trace_);
}

} // namespace

std::variant<Trace, TraceError> parseTrace(std::string_view text) {
    try {
        return TraceParser().parse(text);
    } catch (TraceError& error) {
        return std::move(error);
    }
}

} // namespace quillon
