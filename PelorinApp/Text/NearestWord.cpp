#include "Text/NearestWord.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>
#include <vector>

namespace quillon {

namespace {

constexpr std::size_t longestWord = 64;
constexpr std::size_t charactersPerSlip = 3; // how much of a word may be wrong

bool equalIgnoringCase(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

/// How many bytes have to be inserted, removed or replaced to turn one word into the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (equalIgnoringCase(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearestWordHint(std::string_view word, std::span<const std::string_view> candidates) {
    if (word.size() > longestWord) {
        return {};
    }
    std::string_view nearest;
    std::size_t least = longestWord;
    for (const std::string_view candidate : candidates) {
        const std::size_t distance = editDistance(word, candidate);
        const std::size_t allowed = std::max<std::size_t>(1, candidate.size() / charactersPerSlip);
        if (distance <= allowed && distance < least) {
            nearest = candidate;
            least = distance;
        }
    }
    return nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + "?";
}

} // namespace quillon
