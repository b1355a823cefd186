#include "Replay/TraceRunner.h"
#include "TraceTestSupport.h"

#include "Replay/ReplayTools.h"

#include <vector>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;

const std::string previousDesktop =
    " script tell application \"System Events\" to key code 123 using {control down}";

Lines run(const std::string& text) {
    const Trace trace = parsed(text);
    if (const auto error = checkProperties(trace)) {
        ADD_FAILURE() << error->message;
        return {};
    }
    return runTrace(trace);
}

/// The output of the desktop switcher with its left edge armed and one notch per switch.
Lines runAtLeftEdge(const std::string& statements, const std::string& setup = "") {
    return run("defaults Tool4LeftEdge true\n"
               "defaults Tool4ScrollSensitivity 1\n"
               "tool tool.desktopSwitcher\n" +
               setup + "0 pointer 0 450\n" + statements);
}

/// `LINE:COLUMN: message` for a trace whose tools cannot be had as it names them.
std::string toolFault(const std::string& text) {
    const auto error = checkProperties(parsed(text));
    return error ? std::to_string(error->position.line) + ':' +
                       std::to_string(error->position.column) + ": " + error->message
                 : "no fault";
}

TEST(TraceRunnerTest, NothingHappensWithoutTools) {
    EXPECT_EQ(run("show pass consume tap script\n0 wheel 1\n5 press 0\n6 release 0"),
              (Lines{"0 pass", "5 pass", "6 pass"}));
}

TEST(TraceRunnerTest, ToolsAreInstalledBeforeTheFirstStatement) {
    EXPECT_EQ(runAtLeftEdge("0 wheel 1"),
              (Lines{"0 tap install tool.desktopSwitcher", "0 consume", "0" + previousDesktop}));
}

TEST(TraceRunnerTest, TheDesktopIsThereBeforeTheToolsWhereverItsLinesStand) {
    EXPECT_EQ(run("tool tool.desktopSwitcher\n"
                  "defaults Tool4TopEdge true\n"
                  "screen 0 0 100 50\n"
                  "0 pointer 50 50\n"
                  "0 wheel 1"),
              (Lines{"0 tap install tool.desktopSwitcher", "0 consume"}));
}

TEST(TraceRunnerTest, StatementsOfOneMomentKeepTheirOrder) {
    EXPECT_EQ(runAtLeftEdge("5 wheel 1\n5 pointer 720 450\n5 wheel 1\n", "show consume pass\n"),
              (Lines{"5 consume", "5 pass"}));
}

TEST(TraceRunnerTest, TimersThatAreDueComeBeforeTheStatementsOfTheirMoment) {
    // The permission poll at 2000 ms brings the tap before the scroll of the same moment.
    EXPECT_EQ(runAtLeftEdge("1000 trust granted\n1999.999 wheel 1\n2000 wheel 1",
                            "trust denied\nshow pass consume tap\n"),
              (Lines{"1999.999 pass", "2000 tap install tool.desktopSwitcher", "2000 consume"}));
}

TEST(TraceRunnerTest, AStatementTakesEffectAfterTheTimersOfItsMoment) {
    EXPECT_EQ(runAtLeftEdge("2000 trust granted", "trust denied\n"),
              (Lines{"4000 tap install tool.desktopSwitcher"}));
}

TEST(TraceRunnerTest, QueuesAreDrainedAfterEachStatement) {
    EXPECT_EQ(runAtLeftEdge("5 wheel 1\n5 wheel 1", "show consume script\n"),
              (Lines{"5 consume", "5" + previousDesktop, "5 consume", "5" + previousDesktop}));
}

TEST(TraceRunnerTest, TheEndIsInclusive) {
    const std::string setup = "trust denied\n";
    EXPECT_EQ(runAtLeftEdge("1000 trust granted\n2000 end", setup),
              (Lines{"2000 tap install tool.desktopSwitcher"}));
    EXPECT_EQ(runAtLeftEdge("1000 trust granted\n1999.999 end", setup), Lines{});
}

TEST(TraceRunnerTest, TheRunGoesOnForThreeSeconds) {
    const std::string setup = "trust denied\n";
    EXPECT_EQ(runAtLeftEdge("1000 trust granted\n1000 wheel 1", setup + "show tap\n"),
              (Lines{"2000 tap install tool.desktopSwitcher"}));
    EXPECT_EQ(runAtLeftEdge("1500.001 taps refuse\n+0 trust granted\n1999 taps allow\n"
                            "2999.999 trust denied",
                            "trust denied\n"),
              (Lines{"2000 tap install tool.desktopSwitcher"}));
}

TEST(TraceRunnerTest, WhatIsTakenDownAfterTheEndIsNotShown) {
    EXPECT_EQ(runAtLeftEdge("5 end"), (Lines{"0 tap install tool.desktopSwitcher"}));
}

TEST(TraceRunnerTest, ShowsTheKindsThatWereAskedFor) {
    const std::string statements = "1 script fail no\n2 wheel 1\n3 pointer 720 450\n4 wheel 1\n";
    EXPECT_EQ(runAtLeftEdge(statements, "show pass\n"), (Lines{"4 pass"}));
    EXPECT_EQ(runAtLeftEdge(statements, "show consume\n"), (Lines{"2 consume"}));
    EXPECT_EQ(runAtLeftEdge(statements, "show script\n"), (Lines{"2" + previousDesktop}));
    EXPECT_EQ(runAtLeftEdge(statements, "show tap\n"),
              (Lines{"0 tap install tool.desktopSwitcher"}));
    EXPECT_EQ(runAtLeftEdge(statements, "show log\n"), (Lines{"2 log AppleScript error: no"}));
}

TEST(TraceRunnerTest, EveryScrollFieldReachesTheTap) {
    const auto scripts = [](const std::string& event) {
        return runAtLeftEdge("5 " + event, "show script\n").size();
    };
    EXPECT_EQ(scripts("wheel 1"), 1U);
    EXPECT_EQ(scripts("wheel 0 1"), 1U);
    EXPECT_EQ(scripts("wheel 1 -1"), 0U);
    EXPECT_EQ(scripts("scroll 1"), 1U);
    EXPECT_EQ(scripts("scroll 0 1"), 1U);
    EXPECT_EQ(scripts("scroll 1 fixed"), 1U);
    EXPECT_EQ(scripts("scroll 0 1 fixed"), 1U);
    EXPECT_EQ(scripts("scroll 0 lines=1,0"), 1U);
    EXPECT_EQ(scripts("scroll 0 lines=0,1"), 1U);
    EXPECT_EQ(scripts("scroll 0 lines=1,0 continuous"), 0U);
}

TEST(TraceRunnerTest, PhasesReachTheTap) {
    const auto scripts = [](const std::string& event) {
        return run("defaults Tool4LeftEdge true\n"
                   "defaults Tool4ScrollSensitivity 2\n"
                   "tool tool.desktopSwitcher\n"
                   "show script\n"
                   "0 pointer 0 450\n"
                   "1 " +
                   event + "\n2 scroll 1\n")
            .size();
    };
    EXPECT_EQ(scripts("scroll 1"), 1U);
    EXPECT_EQ(scripts("scroll 1 phase=8"), 0U);
    EXPECT_EQ(scripts("scroll 1 momentum=8"), 0U);
}

TEST(TraceRunnerTest, ThePointerStartsInTheMiddleOfTheMainScreen) {
    const std::string tool =
        "defaults Tool4LeftEdge true\ntool tool.desktopSwitcher\nshow consume\n";
    EXPECT_EQ(run(tool + "defaults Tool4EdgeSensitivity 719\n0 wheel 1"), Lines{});
    EXPECT_EQ(run(tool + "defaults Tool4EdgeSensitivity 720\n0 wheel 1"), (Lines{"0 consume"}));
    const std::string screens = "screen 100 100 60 60\nscreen 0 0 50 50\n";
    EXPECT_EQ(run(screens + tool + "defaults Tool4EdgeSensitivity 29\n0 wheel 1"), Lines{});
    EXPECT_EQ(run(screens + tool + "defaults Tool4EdgeSensitivity 30\n0 wheel 1"),
              (Lines{"0 consume"}));
}

TEST(TraceRunnerTest, TapsCanBeDisabledRefusedAndDropped) {
    EXPECT_EQ(runAtLeftEdge("1 tapdisabled timeout\n2 wheel 1\n3 tapdisabled user\n4 wheel 1",
                            "show consume pass\n"),
              (Lines{"2 consume", "4 consume"}));
    EXPECT_EQ(runAtLeftEdge("1 drop tool.desktopSwitcher\n2 wheel 1\n5001 wheel 1",
                            "show consume pass tap\n"),
              (Lines{"0 tap install tool.desktopSwitcher", "2 pass",
                     "5000 tap install tool.desktopSwitcher", "5001 consume"}));
    EXPECT_EQ(runAtLeftEdge("1 taps refuse\n2 drop tool.desktopSwitcher\n5001 wheel 1\n"
                            "6000 taps allow\n10000 end",
                            "show consume pass tap\n"),
              (Lines{"0 tap install tool.desktopSwitcher", "5001 pass"}));
}

TEST(TraceRunnerTest, ToolsAreSwitchedThroughTheirModules) {
    EXPECT_EQ(runAtLeftEdge("1 tool tool.desktopSwitcher off\n2 tool tool.desktopSwitcher on",
                            "show tap\n"),
              (Lines{"0 tap install tool.desktopSwitcher", "1 tap remove tool.desktopSwitcher",
                     "2 tap install tool.desktopSwitcher"}));
    EXPECT_EQ(run("tool tool.desktopSwitcher off\n1 wheel 1"), Lines{});
    EXPECT_EQ(run("5 tool tool.desktopSwitcher on"), (Lines{"5 tap install tool.desktopSwitcher"}));
    EXPECT_EQ(run("5 tool tool.desktopSwitcher off\n"), Lines{});
}

TEST(TraceRunnerTest, PropertiesAreSetOnTheManager) {
    EXPECT_EQ(runAtLeftEdge("1 set tool.desktopSwitcher leftEdgeEnabled false\n"
                            "2 wheel 1\n"
                            "3 set tool.desktopSwitcher edgeSensitivity 720\n"
                            "4 set tool.desktopSwitcher rightEdgeEnabled true\n"
                            "5 pointer 720 450\n"
                            "6 wheel 1\n"
                            "7 set tool.desktopSwitcher isEnabled false\n",
                            "show consume pass tap\n"),
              (Lines{"0 tap install tool.desktopSwitcher", "2 pass", "6 consume",
                     "7 tap remove tool.desktopSwitcher"}));
}

TEST(TraceRunnerTest, SuitesAreStoresOfTheirOwn) {
    EXPECT_EQ(run("defaults@com.pelorin.shared Tool4LeftEdge true\n"
                  "tool tool.desktopSwitcher\nshow consume pass\n0 pointer 0 450\n1 wheel 1"),
              (Lines{"1 pass"}));
}

TEST(TraceRunnerTest, WhatNoToolObservesChangesNothing) {
    EXPECT_EQ(runAtLeftEdge("1 window 7 Mail 0 0 9 9\n2 front 7\n3 close 7\n4 contacts 3\n"
                            "5 device volume=1\n6 device none\n7 press 0\n",
                            "window 8 Dock 0 0 9 9\nfront 8\ncontacts 1\ndevice none\n"),
              (Lines{"0 tap install tool.desktopSwitcher"}));
}

TEST(TraceRunnerTest, TheSameTraceGivesTheSameOutput) {
    const std::string statements = "1 wheel 1\n2.5 wheel -1\n3 drop tool.desktopSwitcher\n9000 end";
    const Lines first = runAtLeftEdge(statements);
    EXPECT_EQ(first.size(), 6U);
    EXPECT_EQ(runAtLeftEdge(statements), first);
}

TEST(TraceRunnerTest, PropertiesMustBePublishedAndOfTheirType) {
    const std::string set = "0 set tool.desktopSwitcher ";
    EXPECT_EQ(toolFault(set + "isEnabled false"), "no fault");
    EXPECT_EQ(toolFault(set + "scrollSensitivity -9.2e18"), "no fault");
    EXPECT_EQ(toolFault(set + "enabled true"),
              "1:28: tool.desktopSwitcher has no property \"enabled\"; did you mean isEnabled?");
    EXPECT_EQ(toolFault(set + "objectName \"a\""),
              "1:28: tool.desktopSwitcher has no property \"objectName\"");
    EXPECT_EQ(toolFault(set + "hasAccessibilityPermission true"),
              "1:28: \"hasAccessibilityPermission\" cannot be set");
    EXPECT_EQ(toolFault(set + "isEnabled 1"), "1:38: \"isEnabled\" takes true or false");
    EXPECT_EQ(toolFault(set + "isEnabled \"true\""), "1:38: \"isEnabled\" takes true or false");
    EXPECT_EQ(toolFault(set + "edgeSensitivity true"), "1:44: \"edgeSensitivity\" takes a number");
    EXPECT_EQ(toolFault(set + "edgeSensitivity null"), "1:44: \"edgeSensitivity\" takes a number");
    EXPECT_EQ(toolFault(set + "edgeSensitivity 9223372036854775808"),
              "1:44: a number of this size cannot be stored");
}

} // namespace
} // namespace quillon
