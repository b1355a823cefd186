#include "Replay/TraceText.h"

#include "Replay/Trace.h"

#include <algorithm>
#include <cstdint>

namespace quillon {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::uint8_t byteAt(std::string_view text, std::size_t offset) {
    return static_cast<std::uint8_t>(text[offset]);
}

bool isContinuation(std::uint8_t byte) { return (byte & 0xC0U) == 0x80U; }

bool hasContinuations(std::string_view text, std::size_t offset, std::size_t count) {
    if (offset + count >= text.size()) {
        return false;
    }
    for (std::size_t i = 1; i <= count; ++i) {
        if (!isContinuation(byteAt(text, offset + i))) {
            return false;
        }
    }
    return true;
}

/// The length of the character that starts here, 0 when there is none. What the second byte is
/// tested for are forms longer than need be, surrogates, and code points beyond the last one.
std::size_t characterLength(std::string_view text, std::size_t offset) {
    const std::uint8_t lead = byteAt(text, offset);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF && hasContinuations(text, offset, 1)) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF && hasContinuations(text, offset, 2)) {
        const std::uint8_t second = byteAt(text, offset + 1);
        const bool tooLong = lead == 0xE0 && second < 0xA0;
        const bool surrogate = lead == 0xED && second >= 0xA0;
        return tooLong || surrogate ? 0 : 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4 && hasContinuations(text, offset, 3)) {
        const std::uint8_t second = byteAt(text, offset + 1);
        const bool tooLong = lead == 0xF0 && second < 0x90;
        const bool tooLarge = lead == 0xF4 && second >= 0x90;
        return tooLong || tooLarge ? 0 : 4;
    }
    return 0;
}

void checkLine(std::string_view line, int number) {
    for (std::size_t offset = 0; offset < line.size();) {
        const std::size_t length = characterLength(line, offset);
        if (length == 0 || line[offset] == '\0') {
            // Everything before this byte is valid, so its characters can be counted.
            throw TraceError{{number, columnAt(line, offset)},
                             length == 0 ? "not valid UTF-8" : "a NUL character"};
        }
        offset += length;
    }
}

} // namespace

std::vector<std::string_view> traceLines(std::string_view text) {
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        lines.push_back(line);
        checkLine(line, static_cast<int>(lines.size()));
    }
    return lines;
}

int columnAt(std::string_view line, std::size_t offset) {
    const std::string_view before = line.substr(0, offset);
    return 1 + static_cast<int>(std::count_if(before.begin(), before.end(), [](char c) {
               return !isContinuation(static_cast<std::uint8_t>(c));
           }));
}

} // namespace quillon
