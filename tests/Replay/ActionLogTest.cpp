#include "Replay/ActionLog.h"

#include "Platform/Simulated/ActionNumber.h"
#include "Replay/TraceTime.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

TEST(ActionLogTest, AnActionIsALineOfTimeKindAndDetail) {
    ActionLog log({"tap", "consume"});
    log.add(85'500, "tap", "install tool.x");
    log.add(86'000, "log", "hidden");
    log.add(86'000, "consume", "");

    EXPECT_EQ(log.lines(), (std::vector<std::string>{"85.5 tap install tool.x", "86 consume"}));
}

TEST(ActionLogTest, LineEndsInsideAnActionBecomeBlanks) {
    ActionLog log({"log"});
    log.add(0, "log", "a\nb\r\nc");
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"0 log a b  c"}));
}

TEST(ActionNumberTest, HasSixSignificantDigits) {
    EXPECT_EQ(actionNumber(0.5), "0.5");
    EXPECT_EQ(actionNumber(-12), "-12");
    EXPECT_EQ(actionNumber(100000), "100000");
    EXPECT_EQ(actionNumber(1000000), "1e+06");
    EXPECT_EQ(actionNumber(0.1F), "0.1");
    EXPECT_EQ(actionNumber(0.00001), "1e-05");
    EXPECT_EQ(actionNumber(1234567.5), "1.23457e+06");
    EXPECT_EQ(actionNumber(-1.7976931348623157e308), "-1.79769e+308");
}

TEST(ActionNumberTest, NegativeZeroIsZero) { EXPECT_EQ(actionNumber(-0.0), "0"); }

TEST(MillisecondsTest, KeepTheGeneralFormWhereItIsExact) {
    EXPECT_EQ(milliseconds(0), "0");
    EXPECT_EQ(milliseconds(85'500), "85.5");
    EXPECT_EQ(milliseconds(1), "0.001");
    EXPECT_EQ(milliseconds(999'999'000), "999999");
    EXPECT_EQ(milliseconds(1'000'000'000), "1e+06");
    EXPECT_EQ(milliseconds(86'400'000'000), "8.64e+07");
}

TEST(MillisecondsTest, LoseNoDigitWhereItIsNot) {
    EXPECT_EQ(milliseconds(1'000'001), "1000.001");
    EXPECT_EQ(milliseconds(1'234'567'500), "1234567.5");
    EXPECT_EQ(milliseconds(1'000'001'000), "1000001");
    EXPECT_EQ(milliseconds(86'399'999'999), "86399999.999");
    EXPECT_EQ(milliseconds(1'000'000'010), "1000000.01");
}

} // namespace
} // namespace quillon
