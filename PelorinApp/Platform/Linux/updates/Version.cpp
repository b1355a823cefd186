#include "Platform/Linux/updates/Version.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quillon {

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Letters are those of every alphabet, hence all bytes beyond ASCII.
bool isLetter(char c) {
    return (lower(c) >= 'a' && lower(c) <= 'z') || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

/// Without what stands before the number, if there is one.
std::string_view fromNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.size() > 1 && lower(text[0]) == 'v' && isDigit(text[1])) {
        text.remove_prefix(1);
    }
    return text;
}

/// A run of digits or of letters; the digits are without zeros in front.
struct Part {
    bool isNumber;
    std::string_view text;
};
using Parts = std::vector<Part>;

Parts partsOf(std::string_view text) {
    text = fromNumber(text);
    text = text.substr(0, text.find_first_of("+("));
    Parts parts;
    for (auto rest = text; !rest.empty();) {
        const bool number = isDigit(rest.front());
        if (!number && !isLetter(rest.front())) {
            rest.remove_prefix(1);
            continue;
        }
        const auto* const end = number ? std::find_if_not(rest.begin(), rest.end(), isDigit)
                                       : std::find_if_not(rest.begin(), rest.end(), isLetter);
        std::string_view run = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
        rest.remove_prefix(run.size());
        if (number) {
            run.remove_prefix(std::min(run.find_first_not_of('0'), run.size()));
        }
        parts.push_back({number, run});
    }
    return parts;
}

std::weak_ordering compareNumbers(std::string_view left, std::string_view right) {
    const auto bySize = left.size() <=> right.size();
    return std::is_neq(bySize) ? bySize : left <=> right;
}

std::weak_ordering compareLetters(std::string_view left, std::string_view right) {
    return std::lexicographical_compare_three_way(
        left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
            return static_cast<unsigned char>(lower(a)) <=> static_cast<unsigned char>(lower(b));
        });
}

/// A missing part is a 0. A number comes before letters, so that a pre-release's own follow-ups
/// come after it.
std::weak_ordering compareParts(Part left, Part right) {
    if (left.isNumber != right.isNumber) {
        return left.isNumber ? std::weak_ordering::less : std::weak_ordering::greater;
    }
    return left.isNumber ? compareNumbers(left.text, right.text)
                         : compareLetters(left.text, right.text);
}

std::weak_ordering compareRuns(const Part* left, std::size_t lefts, const Part* right,
                               std::size_t rights) {
    constexpr Part zero{true, {}};
    for (std::size_t i = 0; i < std::max(lefts, rights); ++i) {
        const auto order = compareParts(i < lefts ? left[i] : zero, i < rights ? right[i] : zero);
        if (std::is_neq(order)) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

std::size_t releaseLength(const Parts& parts) {
    return static_cast<std::size_t>(
        std::find_if_not(parts.begin(), parts.end(), [](Part part) { return part.isNumber; }) -
        parts.begin());
}

} // namespace

bool isVersion(std::string_view text) {
    text = fromNumber(text);
    return !text.empty() && isDigit(text.front());
}

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    const Parts lefts = partsOf(left);
    const Parts rights = partsOf(right);
    const std::size_t leftRelease = releaseLength(lefts);
    const std::size_t rightRelease = releaseLength(rights);
    const auto release = compareRuns(lefts.data(), leftRelease, rights.data(), rightRelease);
    if (std::is_neq(release)) {
        return release;
    }
    const std::size_t leftMore = lefts.size() - leftRelease;
    const std::size_t rightMore = rights.size() - rightRelease;
    if ((leftMore == 0) != (rightMore == 0)) {
        return leftMore == 0 ? std::weak_ordering::greater : std::weak_ordering::less;
    }
    return compareRuns(lefts.data() + leftRelease, leftMore, rights.data() + rightRelease,
                       rightMore);
}

} // namespace quillon
