#include "Replay/TraceTime.h"

#include "Platform/Simulated/ActionNumber.h"

#include <algorithm>
#include <charconv>

namespace quillon {

namespace {

using Microseconds = VirtualRunLoop::Microseconds;

constexpr Microseconds perMillisecond = 1000;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The digits from `offset` on, which it moves behind them.
std::string_view digitsAt(std::string_view text, std::size_t& offset) {
    const std::size_t begin = offset;
    while (offset < text.size() && isDigit(text[offset])) {
        ++offset;
    }
    return text.substr(begin, offset - begin);
}

/// Their value, or something beyond the latest time when they are too many.
Microseconds valueOf(std::string_view digits) {
    Microseconds value = 0;
    for (const char digit : digits) {
        value = std::min(value * 10 + (digit - '0'), latestTraceTime + 1);
    }
    return value;
}

} // namespace

Microseconds statementTime(const StatementReader& reader, const TraceWord& word,
                           Microseconds previous) {
    const std::string_view text = word.text;
    const bool isRelative = text.starts_with('+');
    std::size_t offset = isRelative ? 1 : 0;
    const std::string_view whole = digitsAt(text, offset);
    std::string_view fraction;
    bool isTime = !whole.empty();
    if (isTime && offset < text.size() && text[offset] == '.') {
        fraction = digitsAt(text, ++offset);
        isTime = !fraction.empty();
    }
    if (!isTime || offset != text.size()) {
        reader.fail(word, "a time is a number of milliseconds such as 250, 85.5 or +20, not " +
                              inQuotes(text));
    }
    std::string thousandths(fraction.substr(0, fraction.find_last_not_of('0') + 1));
    if (thousandths.size() > 3) {
        reader.fail(word, "a time has at most three decimals: whole microseconds");
    }
    thousandths.resize(3, '0');
    const Microseconds time =
        valueOf(whole) * perMillisecond + valueOf(thousandths) + (isRelative ? previous : 0);
    if (time > latestTraceTime) {
        reader.fail(word, "a trace lasts at most 86400000 ms, a day");
    }
    if (time < previous) {
        reader.fail(word, "time goes back: " + milliseconds(time) + " ms stands after " +
                              milliseconds(previous) + " ms");
    }
    return time;
}

std::string milliseconds(Microseconds time) {
    const double exact = static_cast<double>(time) / perMillisecond;
    std::string general = actionNumber(exact);
    double shown = 0;
    std::from_chars(general.data(), general.data() + general.size(), shown);
    if (shown == exact) {
        return general;
    }
    std::string text = std::to_string(time / perMillisecond);
    if (const Microseconds rest = time % perMillisecond; rest != 0) {
        std::string decimals = std::to_string(perMillisecond + rest).substr(1);
        decimals.erase(decimals.find_last_not_of('0') + 1);
        text += '.' + decimals;
    }
    return text;
}

} // namespace quillon
