#include "Replay/LineDiff.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;

Lines letters(const std::string& text) {
    Lines lines;
    for (const char c : text) {
        lines.emplace_back(1, c);
    }
    return lines;
}

Lines diff(const std::string& expected, const std::string& actual) {
    return unifiedDiff(letters(expected), letters(actual), 1);
}

TEST(LineDiffTest, EqualTextsHaveNone) {
    EXPECT_EQ(diff("abc", "abc"), Lines{});
    EXPECT_EQ(diff("", ""), Lines{});
}

TEST(LineDiffTest, ShowsThreeLinesAroundAChange) {
    EXPECT_EQ(diff("abcdefgh", "abcdXfgh"),
              (Lines{"@@ -2,7 +2,7 @@", " b", " c", " d", "-e", "+X", " f", " g", " h"}));
}

TEST(LineDiffTest, FindsLinesThatMovedApart) {
    EXPECT_EQ(diff("abc", "aXbYc"), (Lines{"@@ -1,3 +1,5 @@", " a", "+X", " b", "+Y", " c"}));
    EXPECT_EQ(diff("aXbYc", "abc"), (Lines{"@@ -1,5 +1,3 @@", " a", "-X", " b", "-Y", " c"}));
}

TEST(LineDiffTest, ChangesFarApartAreHunksOfTheirOwn) {
    EXPECT_EQ(diff("Xabcdefg", "abcdefgY"), (Lines{"@@ -1,4 +1,3 @@", "-X", " a", " b", " c",
                                                   "@@ -6,3 +5,4 @@", " e", " f", " g", "+Y"}));
    EXPECT_EQ(diff("Xabcdef", "abcdefY"),
              (Lines{"@@ -1,7 +1,7 @@", "-X", " a", " b", " c", " d", " e", " f", "+Y"}));
}

TEST(LineDiffTest, AnEmptySideNamesTheLineBefore) {
    EXPECT_EQ(diff("", "a"), (Lines{"@@ -0,0 +1,1 @@", "+a"}));
    EXPECT_EQ(diff("a", ""), (Lines{"@@ -1,1 +0,0 @@", "-a"}));
}

TEST(LineDiffTest, CountsTheExpectedLinesAsTheirFileDoes) {
    EXPECT_EQ(unifiedDiff(letters("ab"), letters("a"), 41),
              (Lines{"@@ -41,2 +1,1 @@", " a", "-b"}));
}

TEST(LineDiffTest, LongTextsAreReplacedWhole) {
    const Lines expected(3000, "a");
    Lines actual(3000, "b");
    actual[1500] = "a";

    const Lines result = unifiedDiff(expected, actual, 1);

    ASSERT_EQ(result.size(), 6001U);
    EXPECT_EQ(result[0], "@@ -1,3000 +1,3000 @@");
    EXPECT_EQ(result[3000], "-a");
    EXPECT_EQ(result[3001], "+b");
}

} // namespace
} // namespace quillon
