#pragma once

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>

/// TITLE X Y WIDTH HEIGHT, as the toolkit clients are called.
struct ClientArguments {
    const char* title;
    int x, y, width, height;
};

inline std::optional<ClientArguments> readClientArguments(int count, char** words) {
    std::array<int, 4> numbers{};
    if (count != 6) {
        std::fprintf(stderr, "usage: %s TITLE X Y WIDTH HEIGHT\n", words[0]);
        return std::nullopt;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string_view word = words[i + 2];
        const auto [end, error] = std::from_chars(word.begin(), word.end(), numbers[i]);
        if (error != std::errc() || end != word.end()) {
            std::fprintf(stderr, "%s: not a number: %s\n", words[0], words[i + 2]);
            return std::nullopt;
        }
    }
    return ClientArguments{words[1], numbers[0], numbers[1], numbers[2], numbers[3]};
}

/// One line of what was received, written at once. Up and right are positive; a notch is 1.
inline void reportScroll(double dx, double dy) {
    std::printf("scroll %g %g\n", dx, dy);
    std::fflush(stdout);
}
