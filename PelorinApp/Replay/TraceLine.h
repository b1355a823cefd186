#pragma once

#include "Replay/Trace.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// A word of a statement and the byte at which it stands in its line.
struct TraceWord {
    std::string text;
    bool quoted = false;
    std::size_t offset = 0;
};

/// One line of a trace, word by word. Blanks separate words; double quotes hold a word with blanks
/// together, and in them \" and \\ stand for a quote and a backslash; a # where a word could begin
/// starts a comment.
class TraceLine {
  public:
    TraceLine(std::string_view text, int number) : text_(text), number_(number) {}

    /// The next word, or nothing where the statement ends.
    std::optional<TraceWord> next();

    /// All that remains of the line without the blanks around it; # and quotes mean nothing in it.
    TraceWord rest();

    /// Where the next word begins or the statement ends.
    [[nodiscard]] std::size_t offset() const;

    [[nodiscard]] TracePosition position(std::size_t offset) const;
    [[noreturn]] void fail(std::size_t offset, std::string message) const;

  private:
    [[nodiscard]] bool atBlank() const;
    TraceWord quotedWord();
    TraceWord plainWord();

    std::string_view text_;
    int number_;
    std::size_t offset_ = 0;
};

} // namespace quillon
