#pragma once

#include "Replay/TraceLine.h"

#include <array>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

/// An optional word at a statement's end: `name` or `name=VALUE`.
struct OptionForm {
    std::string_view name;
    bool hasValue = false;
};

/// Whether a frame may be without area.
enum class Extent { some, any };

struct JsonArgument {
    DefaultsObject object;
    std::size_t offset = 0;
};

/// The options that were given; a flag's value is an empty word.
using StatementOptions = std::map<std::string, TraceWord, std::less<>>;

/// Reads the arguments of one statement in their types. Each function throws a TraceError that
/// says what was expected where something else, or nothing, stands.
class StatementReader {
  public:
    StatementReader(std::string_view line, int number) : line_(line, number) {}

    [[nodiscard]] const TraceLine& line() const { return line_; }

    /// The next word, or nothing where the statement ends.
    std::optional<TraceWord> nextWord() { return line_.next(); }
    TraceWord word(std::string_view what);

    /// All that remains of the line.
    TraceWord text(std::string_view what);

    double number(std::string_view what) { return toNumber(word(what), what); }
    double numberOr(double fallback, std::string_view what);
    int integer(std::string_view what, int least, int most);
    ProcessId processId();
    Rect frame(Extent extent);
    ToolName tool();

    /// Which of the words stands here.
    std::size_t choice(std::string_view what, std::span<const std::string_view> words);

    /// One of two words: whether it is the second. Nothing follows it.
    bool either(std::string_view what, const std::array<std::string_view, 2>& words);

    /// A JSON value, which takes the rest of the line.
    JsonArgument json();

    StatementOptions options(std::span<const OptionForm> forms);

    /// Nothing but a comment may follow.
    void finish();

    [[nodiscard]] double toNumber(const TraceWord& word, std::string_view what) const;
    [[nodiscard]] int toInteger(const TraceWord& word, std::string_view what, int least,
                                int most) const;

    [[noreturn]] void fail(const TraceWord& word, std::string message) const {
        line_.fail(word.offset, std::move(message));
    }
    [[noreturn]] void failUnknown(const TraceWord& word, std::string_view what,
                                  std::span<const std::string_view> words) const;

  private:
    TraceLine line_;
};

/// The items of a list such as `1,2`.
[[nodiscard]] std::vector<TraceWord> listItems(const TraceWord& word);

/// A word of a trace as a message quotes it, cut where it is very long.
[[nodiscard]] std::string inQuotes(std::string_view word);

} // namespace quillon
