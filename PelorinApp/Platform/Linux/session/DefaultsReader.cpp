#include "Platform/Linux/session/DefaultsReader.h"

#include "Platform/Linux/session/OverflowingNumbers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>

namespace quillon {

namespace {

using nlohmann::json;

constexpr std::string_view blanks = " \t\r\n";
constexpr std::size_t longestDescription = 60;

/// Hands the text to the parser and lets its events know how far the parser has read.
class CountingIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* at, std::size_t* count) : at_(at), count_(count) {}
    reference operator*() const { return *at_; }
    CountingIterator& operator++() {
        ++at_;
        ++*count_;
        return *this;
    }
    bool operator==(const CountingIterator& other) const { return at_ == other.at_; }

  private:
    const char* at_;
    std::size_t* count_;
};

/// The text without the blanks between its tokens, cut to a length that suits a line of log.
std::string describe(std::string_view text) {
    std::string description;
    bool inString = false;
    for (std::size_t i = 0; i < text.size() && description.size() <= longestDescription; ++i) {
        const char c = text[i];
        if (!inString && blanks.find(c) != std::string_view::npos) {
            continue;
        }
        description += c;
        if (inString && c == '\\') {
            description += text[++i];
        } else if (c == '"') {
            inString = !inString;
        }
    }
    if (description.size() > longestDescription) {
        std::size_t end = longestDescription;
        while ((static_cast<unsigned char>(description[end]) & 0xC0U) == 0x80U) {
            --end; // not in the middle of a character
        }
        description.resize(end);
        description += "…";
    }
    return description;
}

/// Collects the members of the outermost object from the parser's events.
class MemberCollector final : public json::json_sax_t {
  public:
    MemberCollector(std::string_view text, std::string_view parsed, const std::size_t& position,
                    DefaultsDocument::Values& values)
        : text_(text), parsed_(parsed), position_(position), values_(values) {}

    std::string reason;

    bool null() override { return scalar(UnsupportedObject{}, position_); }
    bool boolean(bool value) override { return scalar(value, position_); }
    bool number_integer(number_integer_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_float(number_float_t value, const string_t& /*token*/) override {
        return number(value);
    }
    bool binary(binary_t& /*value*/) override { return false; } // JSON text has none

    bool string(string_t& value) override {
        if (depth_ == 2 && onlyStrings_) {
            strings_.push_back(std::move(value));
            return true;
        }
        return scalar(std::move(value), position_);
    }

    bool key(string_t& value) override {
        if (depth_ == 1) {
            key_ = std::move(value);
            colon_ = text_.find_first_not_of(blanks, position_);
        }
        return true;
    }

    bool start_object(std::size_t /*elements*/) override {
        onlyStrings_ = false;
        ++depth_;
        return true;
    }
    bool end_object() override { return end(); }

    bool start_array(std::size_t /*elements*/) override {
        if (depth_ == 0) {
            return notAnObject();
        }
        onlyStrings_ = depth_ == 1;
        strings_.clear();
        ++depth_;
        return true;
    }
    bool end_array() override { return end(); }

    bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                     const nlohmann::detail::exception& error) override {
        // What the parser read last can be the whole file.
        const std::string_view what = error.what();
        const auto from = what.find("at line ");
        reason = "is not valid JSON";
        if (from != std::string_view::npos) {
            reason += ' ';
            reason += what.substr(from, what.find("; last read") - from);
        }
        return false;
    }

  private:
    bool notAnObject() {
        reason = "holds no JSON object";
        return false;
    }

    /// The parser finds the end of a number only by reading on.
    bool number(double value) {
        std::size_t end = 0; // of use for the members alone
        if (depth_ == 1) {
            end = std::min(text_.find_first_not_of("0123456789+-.eE", valueBegin()), text_.size());
        }
        return scalar(value, end);
    }

    bool scalar(DefaultsObject object, std::size_t end) {
        if (depth_ == 0) {
            return notAnObject();
        }
        onlyStrings_ = false;
        if (depth_ == 1) {
            member(std::move(object), end);
        }
        return true;
    }

    bool end() {
        --depth_;
        if (depth_ == 1) {
            if (onlyStrings_) {
                member(std::move(strings_), position_);
            } else {
                member(UnsupportedObject{}, position_);
            }
            strings_.clear();
        }
        return true;
    }

    [[nodiscard]] std::size_t valueBegin() const {
        return text_.find_first_not_of(blanks, colon_ + 1);
    }

    void member(DefaultsObject object, std::size_t end) {
        const std::size_t begin = valueBegin();
        const std::string_view source = text_.substr(begin, end - begin);
        if (std::holds_alternative<UnsupportedObject>(object) ||
            parsed_.substr(begin, end - begin) != source) {
            object = UnsupportedObject{describe(source)};
        }
        values_.insert_or_assign(std::move(key_),
                                 DefaultsDocument::Value{std::move(object), std::string(source)});
    }

    std::string_view text_;
    std::string_view parsed_;
    const std::size_t& position_;
    DefaultsDocument::Values& values_;
    std::size_t depth_ = 0;
    std::string key_;
    std::size_t colon_ = 0;
    StringList strings_;
    bool onlyStrings_ = false;
};

} // namespace

std::optional<DefaultsDamage> readDefaults(std::string_view text,
                                           DefaultsDocument::Values& values) {
    if (text.find_first_not_of(blanks) == std::string_view::npos) {
        return DefaultsDamage{"is empty"};
    }
    // The parser takes a NUL for the end of the text, and would drop what follows.
    if (text.find('\0') != std::string_view::npos) {
        return DefaultsDamage{"contains NUL bytes"};
    }
    const std::string parsed = withoutOverflowingNumbers(text);
    std::size_t position = 0;
    MemberCollector collector(text, parsed, position, values);
    const char* const begin = parsed.data();
    if (json::sax_parse(CountingIterator(begin, &position),
                        CountingIterator(begin + parsed.size(), &position), &collector)) {
        return std::nullopt;
    }
    return DefaultsDamage{std::move(collector.reason)};
}

} // namespace quillon
