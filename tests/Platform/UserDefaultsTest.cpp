#include "Platform/UserDefaults.h"

#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillon {
namespace {

struct UserDefaultsTest : testing::Test {
    std::vector<std::string> lines;
    SimulatedDesktop desktop{
        [this](std::string_view, const std::string& text) { lines.push_back(text); }};
    SimulatedUserDefaults& defaults = desktop.userDefaults.standard();

    double number(double fallback) {
        return doubleForKey(defaults, "key", fallback, desktop.diagnostics);
    }
    bool boolean(bool fallback) {
        return boolForKey(defaults, "key", fallback, desktop.diagnostics);
    }
};

TEST_F(UserDefaultsTest, AbsentKeyGivesTheDefaultSilently) {
    EXPECT_EQ(number(4), 4);
    EXPECT_TRUE(boolean(true));
    EXPECT_TRUE(lines.empty());
}

TEST_F(UserDefaultsTest, StoredFalseAndZeroArePresent) {
    defaults.set("key", false);
    EXPECT_FALSE(boolean(true));
    defaults.set("key", 0.0);
    EXPECT_EQ(number(4), 0);
    EXPECT_TRUE(lines.empty());
}

TEST_F(UserDefaultsTest, WrongTypeGivesTheDefaultAndALine) {
    const std::vector<DefaultsObject> notNumbers{true, std::string("40"), StringList{"40"},
                                                 UnsupportedObject{"{}"}};
    for (const auto& object : notNumbers) {
        lines.clear();
        defaults.set("key", object);
        EXPECT_EQ(number(4), 4);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NE(lines[0].find("key"), std::string::npos);
    }
    lines.clear();
    defaults.set("key", 1.0);
    EXPECT_TRUE(boolean(true));
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(UserDefaultsTest, NumberThatNoStepCanHoldIsOfTheWrongType) {
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), 0x1p63, -0x1p63, 1e300}) {
        lines.clear();
        defaults.set("key", value);
        EXPECT_EQ(number(4), 4) << value;
        EXPECT_EQ(lines.size(), 1U) << value;
    }
    defaults.set("key", std::nextafter(0x1p63, 0));
    EXPECT_EQ(number(4), std::nextafter(0x1p63, 0));
}

} // namespace
} // namespace quillon
