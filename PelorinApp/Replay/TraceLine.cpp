#include "Replay/TraceLine.h"

#include "Replay/TraceText.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {
constexpr std::string_view blanks = " \t";

bool isControl(char c) { return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7f'; }
} // namespace

bool TraceLine::atBlank() const {
    return offset_ >= text_.size() || blanks.find(text_[offset_]) != std::string_view::npos;
}

std::size_t TraceLine::offset() const {
    return std::min(text_.find_first_not_of(blanks, offset_), text_.size());
}

std::optional<TraceWord> TraceLine::next() {
    offset_ = offset();
    if (offset_ == text_.size() || text_[offset_] == '#') {
        return std::nullopt;
    }
    return text_[offset_] == '"' ? quotedWord() : plainWord();
}

TraceWord TraceLine::quotedWord() {
    TraceWord word{{}, true, offset_};
    for (++offset_; offset_ < text_.size(); ++offset_) {
        char c = text_[offset_];
        if (c == '"') {
            ++offset_;
            if (!atBlank()) {
                fail(offset_, "a blank is missing after the closing quote");
            }
            return word;
        }
        if (c == '\\') {
            ++offset_;
            c = offset_ < text_.size() ? text_[offset_] : '\0';
            if (c != '"' && c != '\\') {
                fail(offset_ - 1, R"(in quotes a backslash stands before " or \ only)");
            }
        }
        if (isControl(c)) {
            fail(offset_, "a control character");
        }
        word.text += c;
    }
    fail(word.offset, "the closing quote is missing");
}

TraceWord TraceLine::plainWord() {
    TraceWord word{{}, false, offset_};
    for (; !atBlank(); ++offset_) {
        const char c = text_[offset_];
        if (c == '"') {
            fail(offset_, "a quote inside a word; quote the whole word");
        }
        if (isControl(c)) {
            fail(offset_, "a control character");
        }
        word.text += c;
    }
    return word;
}

TraceWord TraceLine::rest() {
    offset_ = offset();
    TraceWord word{std::string(text_.substr(offset_)), false, offset_};
    word.text.erase(word.text.find_last_not_of(blanks) + 1);
    if (const auto control = std::find_if(word.text.begin(), word.text.end(), isControl);
        control != word.text.end()) {
        fail(offset_ + static_cast<std::size_t>(control - word.text.begin()),
             "a control character");
    }
    offset_ = text_.size();
    return word;
}

TracePosition TraceLine::position(std::size_t offset) const {
    return {number_, columnAt(text_, offset)};
}

void TraceLine::fail(std::size_t offset, std::string message) const {
    throw TraceError{position(offset), std::move(message)};
}

} // namespace quillon
