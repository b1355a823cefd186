#include "Platform/Linux/updates/Version.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

TEST(VersionTest, Less) {
    const std::vector<std::pair<const char*, const char*>> table{
        {"1.9", "1.10"},
        {"0.1.0", "0.2.0"},
        {"1", "2"},
        {"1.9.9", "2"},
        {"1.0", "1.0.1"},
        {"1.0.0.0", "1.0.0.1"},
        {"2.0b1", "2.0"},
        {"2.0b1", "2.0.0"},
        {"2.0.0b1", "2.0"},
        {"2.0-rc.1", "2.0"},
        {"1.9", "2.0-rc.1"},
        {"2.0-rc.1", "2.0-rc.2"},
        {"2.0-rc.9", "2.0-rc.10"},
        {"2.0-rc", "2.0-rc.1"},
        {"2.0-rc.1", "2.0-rc.1.dev"},
        {"2.0-rc.1.1", "2.0-rc.1.dev"},
        {"2.0a1", "2.0b1"},
        {"2.0-alpha", "2.0-beta"},
        {"2.0-beta.11", "2.0-rc.1"},
        {"2.0 beta 3", "2.0"},
        {"1.0.1a", "1.0.1"},
        {"1.0.1a", "1.0.1b"},
        {"1.0", "1.0.1a"},
        {"1.0.1b", "1.0.2a"},
        {"99999999999999999999", "100000000000000000000"},
        {"1.18446744073709551615", "1.18446744073709551616"},
        {"9", "18446744073709551616"},
        {"2023.9.1", "2023.10.1"},
        {"junk", "0"},
        {"junk", "0.0.1"},
        {"\xff\xfe", "0"},
        {"-.-", "0.1"},
        {"1.0ä", "1.0"},
        {"1.0z", "1.0ä"},
        {"1.0", "1.0-5-gabc"},
    };
    for (const auto& [less, greater] : table) {
        EXPECT_TRUE(compareVersions(less, greater) < 0) << less << " < " << greater;
        EXPECT_TRUE(compareVersions(greater, less) > 0) << greater << " > " << less;
    }
}

TEST(VersionTest, Equivalent) {
    const std::vector<std::pair<const char*, const char*>> table{
        {"1.0", "1.0.0"},     {"1", "1.0.0.0.0"},   {"1.02", "1.2"},
        {"v1.2", "1.2"},      {"V1.2", "1.2"},      {"  1.2\n", "1.2"},
        {"1.2+build", "1.2"}, {"1.2+7", "1.2+8"},   {"2.0 (1234)", "2.0"},
        {"2.0B1", "2.0b1"},   {"2.0-b.1", "2.0b1"}, {"2.0.0b1", "2.0b1"},
        {"2.0rc", "2.0rc0"},  {"2_0-1", "2.0.1"},   {"", "0"},
        {"1..2", "1.2"},      {"1.2.", "1.2"},      {"000000000000000000000000001", "1"},
        {"...", ""},          {"1.0(", "1.0"},
    };
    for (const auto& [left, right] : table) {
        EXPECT_TRUE(compareVersions(left, right) == 0) << left << " = " << right;
        EXPECT_TRUE(compareVersions(right, left) == 0) << right << " = " << left;
    }
}

TEST(VersionTest, AnyTwoAndThreeAgree) {
    const std::vector<std::string> all{
        "",      "0",     "1",       "1.0",     "1.0.0",  "1.0a",       "1.0a1",  "1.0.a1",
        "1.a.0", "a",     "a1",      "1a",      "1.0-rc", "1.0-rc.1",   "1.0.1",  "1.0.1a",
        "v1",    "v",     "1.0rc.x", "1.0rc.0", "1.0rc1", "1.0rc.0.x",  "..",     "1.0+x",
        "\x80",  "1\x80", "1.10",    "1.9",     "01.9",   "1.0rc.1.0a", "1.0rcx", "99999999999",
    };
    for (const auto& a : all) {
        EXPECT_TRUE(compareVersions(a, a) == 0) << a;
        for (const auto& b : all) {
            EXPECT_EQ(compareVersions(a, b) < 0, compareVersions(b, a) > 0) << a << " " << b;
            for (const auto& c : all) {
                if (compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0) {
                    EXPECT_TRUE(compareVersions(a, c) <= 0) << a << " " << b << " " << c;
                }
            }
        }
    }
}

TEST(VersionTest, HugeTextsAreCompared) {
    const std::string nines(500'000, '9');
    EXPECT_TRUE(compareVersions(nines, "1" + std::string(500'000, '0')) < 0);
    EXPECT_TRUE(compareVersions(std::string(1'000'000, '.') + "1", "1") == 0);
}

TEST(VersionTest, VersionsBeginWithANumber) {
    for (const char* version : {"1", "0.2", "v3", " 4", "V5b"}) {
        EXPECT_TRUE(isVersion(version)) << version;
    }
    for (const char* other : {"", "v", "vv1", "release 2", "-1", ".5", " ", "\xc2\xb2"}) {
        EXPECT_FALSE(isVersion(other)) << other;
    }
}

} // namespace
} // namespace quillon
