#include "Replay/StatementReader.h"

#include "Replay/TraceJson.h"
#include "Text/NearestWord.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace quillon {

namespace {

constexpr std::size_t longestQuotation = 60; // bytes

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

bool beginsNumber(char c) { return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.'; }

/// An explicit plus sign is a person's right, but std::from_chars does not know it.
std::string_view withoutPlus(std::string_view text) {
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return plus ? text.substr(1) : text;
}

} // namespace

std::string inQuotes(std::string_view word) {
    if (word.size() <= longestQuotation) {
        return '"' + std::string(word) + '"';
    }
    std::size_t length = longestQuotation;
    while (isContinuationByte(word[length])) {
        --length;
    }
    return '"' + std::string(word.substr(0, length)) + "…\"";
}

std::vector<TraceWord> listItems(const TraceWord& word) {
    std::vector<TraceWord> items;
    std::size_t begin = 0;
    while (begin <= word.text.size()) {
        const std::size_t end = std::min(word.text.find(',', begin), word.text.size());
        items.push_back({word.text.substr(begin, end - begin), false, word.offset + begin});
        begin = end + 1;
    }
    return items;
}

TraceWord StatementReader::word(std::string_view what) {
    if (auto word = line_.next()) {
        return *std::move(word);
    }
    line_.fail(line_.offset(), std::string(what) + " is missing");
}

TraceWord StatementReader::text(std::string_view what) {
    TraceWord text = line_.rest();
    if (text.text.empty()) {
        fail(text, std::string(what) + " is missing");
    }
    return text;
}

double StatementReader::toNumber(const TraceWord& word, std::string_view what) const {
    const std::string_view digits = withoutPlus(word.text);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isNumber = !word.quoted && beginsNumber(word.text[0]) &&
                          error != std::errc::invalid_argument &&
                          end == digits.data() + digits.size();
    if (!isNumber) {
        fail(word, std::string(what) + " is a number, not " + inQuotes(word.text));
    }
    if (error != std::errc() || !isStorableNumber(value)) {
        fail(word, std::string(what) + " is out of range: " + inQuotes(word.text));
    }
    return value;
}

int StatementReader::toInteger(const TraceWord& word, std::string_view what, int least,
                               int most) const {
    const std::string_view digits = withoutPlus(word.text);
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (word.quoted || error == std::errc::invalid_argument ||
        end != digits.data() + digits.size()) {
        fail(word, std::string(what) + " is a whole number, not " + inQuotes(word.text));
    }
    if (error != std::errc() || value < least || value > most) {
        fail(word, std::string(what) + " is out of range: " + inQuotes(word.text));
    }
    return value;
}

double StatementReader::numberOr(double fallback, std::string_view what) {
    TraceLine ahead = line_;
    const auto word = ahead.next();
    const bool isNumber = word && !word->quoted && beginsNumber(word->text[0]);
    return isNumber ? number(what) : fallback;
}

int StatementReader::integer(std::string_view what, int least, int most) {
    return toInteger(word(what), what, least, most);
}

ProcessId StatementReader::processId() {
    return integer("the process id", 1, std::numeric_limits<ProcessId>::max());
}

Rect StatementReader::frame(Extent extent) {
    Rect frame;
    frame.x = number("X");
    frame.y = number("Y");
    const auto side = [&](std::string_view what) {
        const TraceWord given = word(what);
        const double value = toNumber(given, what);
        if (value < 0 || (value == 0 && extent == Extent::some)) {
            fail(given, std::string(what) + " is too small");
        }
        return value;
    };
    frame.width = side("the width");
    frame.height = side("the height");
    return frame;
}

ToolName StatementReader::tool() {
    const TraceWord id = word("a tool id");
    if (std::find(toolIds.begin(), toolIds.end(), id.text) == toolIds.end()) {
        failUnknown(id, "tool", toolIds);
    }
    return {id.text, line_.position(id.offset)};
}

std::size_t StatementReader::choice(std::string_view what,
                                    std::span<const std::string_view> words) {
    const TraceWord given = word(what);
    const auto found = std::find(words.begin(), words.end(), given.text);
    if (given.quoted || found == words.end()) {
        std::string message = std::string(what) + " is one of";
        for (const std::string_view candidate : words) {
            message += ' ';
            message += candidate;
        }
        fail(given, message + ", not " + inQuotes(given.text) + nearestWordHint(given.text, words));
    }
    return static_cast<std::size_t>(found - words.begin());
}

bool StatementReader::either(std::string_view what, const std::array<std::string_view, 2>& words) {
    const bool second = choice(what, words) == 1;
    finish();
    return second;
}

JsonArgument StatementReader::json() {
    const TraceWord text = this->text("a JSON value");
    auto parsed = objectFromJson(text.text);
    if (auto* fault = std::get_if<JsonFault>(&parsed)) {
        if (fault->offset < text.text.size() && text.text[fault->offset] == '#') {
            fault->message = "no comment can follow JSON on its line";
        }
        line_.fail(text.offset + fault->offset, std::move(fault->message));
    }
    return {std::get<DefaultsObject>(std::move(parsed)), text.offset};
}

StatementOptions StatementReader::options(std::span<const OptionForm> forms) {
    StatementOptions given;
    while (auto word = line_.next()) {
        const std::size_t equals = word->text.find('=');
        const bool hasValue = equals != std::string::npos;
        const std::string name = word->text.substr(0, equals);
        const auto* const end = forms.data() + forms.size();
        const auto* const form = std::find_if(
            forms.data(), end, [&](const OptionForm& known) { return known.name == name; });
        if (word->quoted || form == end) {
            std::vector<std::string_view> names;
            for (const OptionForm& known : forms) {
                names.push_back(known.name);
            }
            word->text = name;
            failUnknown(*word, "option", names);
        }
        if (form->hasValue != hasValue) {
            fail(*word, inQuotes(name) + (hasValue ? " takes no value" : " needs =VALUE"));
        }
        TraceWord value;
        if (hasValue) {
            value.text = word->text.substr(equals + 1);
            value.offset = word->offset + equals + 1;
        }
        if (!given.emplace(name, value).second) {
            fail(*word, inQuotes(name) + " is given twice");
        }
    }
    return given;
}

void StatementReader::finish() {
    if (const auto word = line_.next()) {
        fail(*word, "nothing may follow here, but " + inQuotes(word->text) + " does");
    }
}

void StatementReader::failUnknown(const TraceWord& word, std::string_view what,
                                  std::span<const std::string_view> words) const {
    fail(word, "unknown " + std::string(what) + ' ' + inQuotes(word.text) +
                   nearestWordHint(word.text, words));
}

} // namespace quillon
