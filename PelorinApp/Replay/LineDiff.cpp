#include "Replay/LineDiff.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quillon {

namespace {

using Lines = std::span<const std::string>;

constexpr std::size_t contextLines = 3;
/// Beyond this many pairs of lines a search for common ones costs more than it tells.
constexpr std::size_t mostPairs = 4'000'000;

enum class Edit : char { keep = ' ', remove = '-', add = '+' };

/// For each pair of positions the length of the longest common subsequence from there on.
class CommonLengths {
  public:
    CommonLengths(Lines expected, Lines actual)
        : width_(actual.size() + 1), lengths_((expected.size() + 1) * width_) {
        for (std::size_t i = expected.size(); i-- > 0;) {
            for (std::size_t j = actual.size(); j-- > 0;) {
                lengths_[i * width_ + j] = expected[i] == actual[j]
                                               ? at(i + 1, j + 1) + 1
                                               : std::max(at(i + 1, j), at(i, j + 1));
            }
        }
    }
    [[nodiscard]] std::uint32_t at(std::size_t i, std::size_t j) const {
        return lengths_[i * width_ + j];
    }

  private:
    std::size_t width_;
    std::vector<std::uint32_t> lengths_;
};

void appendMiddle(std::vector<Edit>& edits, Lines expected, Lines actual) {
    std::size_t i = 0;
    std::size_t j = 0;
    if (expected.size() * actual.size() <= mostPairs) {
        const CommonLengths common(expected, actual);
        while (i < expected.size() && j < actual.size()) {
            if (expected[i] == actual[j]) {
                edits.push_back(Edit::keep);
                ++i;
                ++j;
            } else if (common.at(i + 1, j) >= common.at(i, j + 1)) {
                edits.push_back(Edit::remove);
                ++i;
            } else {
                edits.push_back(Edit::add);
                ++j;
            }
        }
    }
    edits.insert(edits.end(), expected.size() - i, Edit::remove);
    edits.insert(edits.end(), actual.size() - j, Edit::add);
}

std::vector<Edit> editsBetween(Lines expected, Lines actual) {
    const std::size_t shorter = std::min(expected.size(), actual.size());
    std::size_t head = 0;
    while (head < shorter && expected[head] == actual[head]) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head &&
           expected[expected.size() - 1 - tail] == actual[actual.size() - 1 - tail]) {
        ++tail;
    }
    std::vector<Edit> edits(head, Edit::keep);
    appendMiddle(edits, expected.subspan(head, expected.size() - head - tail),
                 actual.subspan(head, actual.size() - head - tail));
    edits.insert(edits.end(), tail, Edit::keep);
    return edits;
}

/// The last change of the hunk that begins with the one at `first`: changes belong together when
/// no more than two contexts lie between them.
std::size_t lastChangeOfHunk(const std::vector<Edit>& edits, std::size_t first) {
    std::size_t last = first;
    for (std::size_t k = first; k < edits.size() && k <= last + 2 * contextLines + 1; ++k) {
        if (edits[k] != Edit::keep) {
            last = k;
        }
    }
    return last;
}

/// `12,3` as the header of a hunk counts lines; an empty range names the line before it.
std::string rangeText(std::size_t begin, std::size_t count, int firstLine) {
    const auto line = static_cast<long>(begin) + firstLine - (count == 0 ? 1 : 0);
    return std::to_string(line) + ',' + std::to_string(count);
}

} // namespace

std::vector<std::string> unifiedDiff(Lines expected, Lines actual, int firstExpectedLine) {
    const std::vector<Edit> edits = editsBetween(expected, actual);
    std::vector<std::string> diff;
    std::size_t i = 0; // positions in the two texts
    std::size_t j = 0;
    for (std::size_t k = 0; k < edits.size();) {
        const auto changed = std::find_if(edits.begin() + static_cast<std::ptrdiff_t>(k),
                                          edits.end(), [](Edit e) { return e != Edit::keep; });
        if (changed == edits.end()) {
            break;
        }
        const auto first = static_cast<std::size_t>(changed - edits.begin());
        const std::size_t begin = first - std::min(contextLines, first - k);
        const std::size_t end =
            std::min(edits.size(), lastChangeOfHunk(edits, first) + 1 + contextLines);
        i += begin - k;
        j += begin - k;
        const std::size_t hunk = diff.size();
        diff.emplace_back();
        const std::size_t i0 = i;
        const std::size_t j0 = j;
        for (k = begin; k < end; ++k) {
            const std::string& line = edits[k] == Edit::add ? actual[j] : expected[i];
            diff.push_back(static_cast<char>(edits[k]) + line);
            i += edits[k] == Edit::add ? 0 : 1;
            j += edits[k] == Edit::remove ? 0 : 1;
        }
        diff[hunk] = "@@ -" + rangeText(i0, i - i0, firstExpectedLine) + " +" +
                     rangeText(j0, j - j0, 1) + " @@";
    }
    return diff;
}

} // namespace quillon
