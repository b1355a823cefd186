#pragma once

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

/// [--all] TITLE X Y WIDTH HEIGHT, as the toolkit clients are called.
struct ClientArguments {
    bool all; ///< Also pointer motion, the pointer's coming and going, and double clicks.
    const char* title;
    int x, y, width, height;
};

inline std::optional<ClientArguments> readClientArguments(int count, char** words) {
    std::array<int, 4> numbers{};
    const bool all = count > 1 && std::string_view(words[1]) == "--all";
    const int title = all ? 2 : 1;
    if (count != title + 5) {
        std::fprintf(stderr, "usage: %s [--all] TITLE X Y WIDTH HEIGHT\n", words[0]);
        return std::nullopt;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string_view word = words[title + 1 + i];
        const auto [end, error] = std::from_chars(word.begin(), word.end(), numbers[i]);
        if (error != std::errc() || end != word.end()) {
            std::fprintf(stderr, "%s: not a number: %s\n", words[0], words[title + 1 + i]);
            return std::nullopt;
        }
    }
    return ClientArguments{all, words[title], numbers[0], numbers[1], numbers[2], numbers[3]};
}

/// One line of what was received, written at once.
inline void report(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

/// The shortest text that reads back as the very same number, so that two lists of such lines are
/// equal only if the numbers are.
inline std::string exactly(double number) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

/// Up and right are positive; a notch is 1. What the server derives from smooth scrolling, for
/// programs that know only wheel buttons, is the same notch again.
inline void reportScroll(double dx, double dy, bool derived = false) {
    report((derived ? "derived " : "scroll ") + exactly(dx) + ' ' + exactly(dy));
}
