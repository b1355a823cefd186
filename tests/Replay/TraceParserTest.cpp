#include "TraceTestSupport.h"

#include <algorithm>
#include <vector>

namespace quillon {
namespace {

DefaultsObject storedObject(const std::string& json) {
    const Trace trace = parsed("defaults Key " + json);
    return trace.defaults.empty() ? DefaultsObject(UnsupportedObject{"nothing"})
                                  : trace.defaults.front().object;
}

VirtualRunLoop::Microseconds timeOf(const std::string& text) {
    const Trace trace = parsed(text);
    return trace.actions.empty() ? -1 : trace.actions.back().time;
}

TEST(TraceParserTest, AnEmptyTraceIsTheDesktopAsItComes) {
    const Trace trace = parsed("");

    EXPECT_TRUE(trace.defaults.empty());
    EXPECT_TRUE(trace.screens.empty());
    EXPECT_TRUE(trace.trusted);
    EXPECT_EQ(trace.contacts, 0);
    ASSERT_TRUE(trace.device);
    EXPECT_EQ(trace.device->volume, 0.5);
    EXPECT_EQ(trace.device->settable, (std::set<std::string, std::less<>>{"mute", "vmvc"}));
    EXPECT_EQ(trace.end, 3'000'000);
    EXPECT_FALSE(trace.expected);
}

TEST(TraceParserTest, ShowsAllKindsButPassAndLogUnlessTold) {
    const ShownKinds usual{"activate", "click",  "consume", "key",    "level", "raise",
                           "rewrite",  "script", "tap",     "unmute", "volume"};
    EXPECT_EQ(parsed("").shown, usual);
    EXPECT_EQ(parsed("show pass log").shown, (ShownKinds{"log", "pass"}));
}

TEST(TraceParserTest, StoredObjectsKeepTheirType) {
    EXPECT_EQ(storedObject("true"), DefaultsObject(true));
    EXPECT_EQ(storedObject("4"), DefaultsObject(4.0));
    EXPECT_EQ(storedObject("-0.5"), DefaultsObject(-0.5));
    EXPECT_EQ(storedObject("1e300"), DefaultsObject(1e300));
    EXPECT_EQ(storedObject(R"("a # \"b\"")"), DefaultsObject(std::string("a # \"b\"")));
    EXPECT_EQ(storedObject(R"(["a", "b"])"), DefaultsObject(StringList{"a", "b"}));
    EXPECT_EQ(storedObject("[]"), DefaultsObject(StringList{}));
    EXPECT_EQ(storedObject("null"), DefaultsObject(UnsupportedObject{"null"}));
    EXPECT_EQ(storedObject(R"(["a", 1])"), DefaultsObject(UnsupportedObject{R"(["a",1])"}));
    EXPECT_EQ(storedObject(R"({"a": []})"), DefaultsObject(UnsupportedObject{R"({"a":[]})"}));
}

TEST(TraceParserTest, StoredObjectsNameTheirStore) {
    const Trace trace = parsed("defaults \"a key\" 1\n"
                               "defaults@com.pelorin.shared \"a key\" 2\n"
                               "defaults \"\" 3\n");

    ASSERT_EQ(trace.defaults.size(), 3U);
    EXPECT_EQ(trace.defaults[0].suite, "");
    EXPECT_EQ(trace.defaults[0].key, "a key");
    EXPECT_EQ(trace.defaults[1].suite, "com.pelorin.shared");
    EXPECT_EQ(trace.defaults[1].key, "a key");
    EXPECT_EQ(trace.defaults[2].key, "");
}

TEST(TraceParserTest, ScreensKeepTheirOrder) {
    const Trace trace = parsed("screen 0 0 1440 900\nscreen -1280.5 -100 1280 1024\n");

    EXPECT_EQ(trace.screens, (std::vector<Rect>{{0, 0, 1440, 900}, {-1280.5, -100, 1280, 1024}}));
}

TEST(TraceParserTest, ReadsTheRestOfTheDesktopAtTheStart) {
    const Trace trace = parsed("trust denied\n"
                               "contacts 3\n"
                               "front 7 \"Text Editor\"\n"
                               "device none\n"
                               "window 7 \"Text Editor\" 0 0 100 200\n"
                               "window 8 Dock -1 -2 0 0 accessory layer=-20 offscreen\n");

    EXPECT_FALSE(trace.trusted);
    EXPECT_EQ(trace.contacts, 3);
    ASSERT_TRUE(trace.front);
    EXPECT_EQ(trace.front->process, 7);
    EXPECT_EQ(trace.front->name, "Text Editor");
    EXPECT_FALSE(trace.device);
    ASSERT_EQ(trace.windows.size(), 2U);
    EXPECT_EQ(trace.windows[0].owner, 7);
    EXPECT_EQ(trace.windows[0].ownerName, "Text Editor");
    EXPECT_EQ(trace.windows[0].frame, (Rect{0, 0, 100, 200}));
    EXPECT_EQ(trace.windows[0].layer, 0);
    EXPECT_TRUE(trace.windows[0].onScreen);
    EXPECT_FALSE(trace.windows[0].accessory);
    EXPECT_EQ(trace.windows[1].layer, -20);
    EXPECT_FALSE(trace.windows[1].onScreen);
    EXPECT_TRUE(trace.windows[1].accessory);
}

TEST(TraceParserTest, ReadsADeviceWithItsLimits) {
    const Trace trace = parsed("device readonly settable=volm volume=0.25 step=0.0625 muted");

    ASSERT_TRUE(trace.device);
    EXPECT_EQ(trace.device->volume, 0.25);
    EXPECT_TRUE(trace.device->muted);
    EXPECT_TRUE(trace.device->readOnly);
    EXPECT_EQ(trace.device->step, 0.0625);
    EXPECT_EQ(trace.device->settable, (std::set<std::string, std::less<>>{"volm"}));
}

TEST(TraceParserTest, ADeviceCanHaveNothingThatIsSettable) {
    const Trace trace = parsed("device volume=1 settable=");
    ASSERT_TRUE(trace.device);
    EXPECT_TRUE(trace.device->settable.empty());
}

TEST(TraceParserTest, ReadsToolsInTheirOrder) {
    const Trace trace = parsed("tool tool.scrollReverse\n  tool tool.volumeControl off\n");

    ASSERT_EQ(trace.tools.size(), 2U);
    EXPECT_EQ(trace.tools[0].tool.id, "tool.scrollReverse");
    EXPECT_TRUE(trace.tools[0].on);
    EXPECT_EQ(trace.tools[1].tool.id, "tool.volumeControl");
    EXPECT_EQ(trace.tools[1].tool.position, (TracePosition{2, 8}));
    EXPECT_FALSE(trace.tools[1].on);
}

TEST(TraceParserTest, ReadsThePointer) {
    const auto move = firstAction<PointerMove>("0 pointer -3.5 +900");
    EXPECT_EQ(move.to, (Point{-3.5, 900}));
}

TEST(TraceParserTest, AWheelFillsTheLineDeltasOnly) {
    const auto scroll = firstAction<ScrollInput>("0 wheel -2 3");
    EXPECT_EQ(scroll.lineDeltaAxis1, -2);
    EXPECT_EQ(scroll.lineDeltaAxis2, 3);
    EXPECT_EQ(scroll.pointDeltaAxis1, 0);
    EXPECT_EQ(scroll.fixedPointDeltaAxis1, 0);
    EXPECT_FALSE(scroll.isContinuous);
    EXPECT_EQ(firstAction<ScrollInput>("0 wheel 1 # up").lineDeltaAxis2, 0);
}

TEST(TraceParserTest, AScrollFillsThePointDeltasOrTheFixedOnes) {
    const auto point = firstAction<ScrollInput>("0 scroll 0.5 -1.5");
    EXPECT_EQ(point.pointDeltaAxis1, 0.5);
    EXPECT_EQ(point.pointDeltaAxis2, -1.5);
    EXPECT_EQ(point.fixedPointDeltaAxis1, 0);
    EXPECT_EQ(point.fixedPointDeltaAxis2, 0);
    EXPECT_FALSE(point.isContinuous);

    const auto fixed = firstAction<ScrollInput>("0 scroll 0.5 fixed");
    EXPECT_EQ(fixed.fixedPointDeltaAxis1, 0.5);
    EXPECT_EQ(fixed.fixedPointDeltaAxis2, 0);
    EXPECT_EQ(fixed.pointDeltaAxis1, 0);
}

TEST(TraceParserTest, AScrollTakesItsOptionsInAnyOrder) {
    const auto scroll =
        firstAction<ScrollInput>("0 scroll 1 2 momentum=3 lines=-4,5.5 phase=8 continuous");
    EXPECT_TRUE(scroll.isContinuous);
    EXPECT_EQ(scroll.lineDeltaAxis1, -4);
    EXPECT_EQ(scroll.lineDeltaAxis2, 5.5);
    EXPECT_EQ(scroll.phase, 8);
    EXPECT_EQ(scroll.momentumPhase, 3);
}

TEST(TraceParserTest, ReadsButtons) {
    EXPECT_EQ(firstAction<ButtonInput>("0 press 0").button, MouseButton::left);
    EXPECT_EQ(firstAction<ButtonInput>("0 press 1").button, MouseButton::right);
    EXPECT_EQ(firstAction<ButtonInput>("0 press 2").button, MouseButton::middle);
    EXPECT_TRUE(firstAction<ButtonInput>("0 press 0").pressed);
    EXPECT_FALSE(firstAction<ButtonInput>("0 release 0").pressed);
}

TEST(TraceParserTest, ReadsWhatHappensToTaps) {
    EXPECT_FALSE(firstAction<TapsDisabled>("0 tapdisabled timeout").byUser);
    EXPECT_TRUE(firstAction<TapsDisabled>("0 tapdisabled user").byUser);
    EXPECT_FALSE(firstAction<TapGrants>("0 taps refuse").allowed);
    EXPECT_TRUE(firstAction<TapGrants>("0 taps allow").allowed);
    EXPECT_EQ(firstAction<TapDrop>("0 drop tool.scrollReverse").tool.id, "tool.scrollReverse");
}

TEST(TraceParserTest, AFailureTextIsTheRestOfTheLine) {
    EXPECT_EQ(firstAction<ScriptFailure>("0 script fail  not \"allowed\" # yet \t").description,
              "not \"allowed\" # yet");
}

TEST(TraceParserTest, ReadsChangesOfTheDesktop) {
    EXPECT_FALSE(firstAction<TrustAnswer>("0 trust denied").granted);
    EXPECT_EQ(firstAction<RestingContacts>("0 contacts 2").count, 2);
    EXPECT_FALSE(firstAction<DeviceChange>("0 device none").device);
    EXPECT_TRUE(firstAction<DeviceChange>("0 device volume=0").device);
    EXPECT_EQ(firstAction<FrontApplication>("0 front 12").process, 12);
    EXPECT_FALSE(firstAction<FrontApplication>("0 front 12").name);
    EXPECT_EQ(firstAction<TraceWindow>("0 window 12 Mail 1 2 3 4 layer=1").layer, 1);
    EXPECT_EQ(firstAction<ApplicationEnd>("0 close 12").process, 12);
}

TEST(TraceParserTest, ReadsAPropertyWithItsPlaces) {
    const auto change =
        firstAction<PropertyChange>("5 set tool.desktopSwitcher  edgeSensitivity  20");
    EXPECT_EQ(change.tool.id, "tool.desktopSwitcher");
    EXPECT_EQ(change.tool.position, (TracePosition{1, 7}));
    EXPECT_EQ(change.property, "edgeSensitivity");
    EXPECT_EQ(change.propertyPosition, (TracePosition{1, 29}));
    EXPECT_EQ(change.value, DefaultsObject(20.0));
    EXPECT_EQ(change.valuePosition, (TracePosition{1, 46}));
}

TEST(TraceParserTest, ReadsAToolThatIsSwitched) {
    EXPECT_TRUE(firstAction<ToolSwitch>("0 tool tool.windowSwitcher on").on);
    EXPECT_FALSE(firstAction<ToolSwitch>("0 tool tool.windowSwitcher off").on);
}

TEST(TraceParserTest, TimesAreWholeMicroseconds) {
    EXPECT_EQ(timeOf("85.5 wheel 1"), 85'500);
    EXPECT_EQ(timeOf("0.001 wheel 1"), 1);
    EXPECT_EQ(timeOf("1.25000 wheel 1"), 1'250);
    EXPECT_EQ(timeOf("1234567.891 wheel 1"), 1'234'567'891);
    EXPECT_EQ(timeOf("86400000 wheel 1"), 86'400'000'000);
}

TEST(TraceParserTest, ARelativeTimeCountsFromTheStatementBefore) {
    EXPECT_EQ(timeOf("+2 wheel 1"), 2'000);
    EXPECT_EQ(timeOf("10 wheel 1\n+0.1 wheel 1\n+0 wheel 1"), 10'100);
}

TEST(TraceParserTest, TheRunEndsWhereItIsToldOrThreeSecondsAfterTheLastStatement) {
    EXPECT_EQ(parsed("10 wheel 1").end, 3'010'000);
    EXPECT_EQ(parsed("10 wheel 1\n20 end").end, 20'000);
    EXPECT_EQ(parsed("10 wheel 1\n+5 end\n").end, 15'000);
    EXPECT_EQ(parsed("10 end").actions.size(), 0U);
}

TEST(TraceParserTest, CommentsAndBlankLinesCountAsLinesOnly) {
    const Trace trace = parsed("# a\n\n  # b\ncontacts 2 # c\n0 wheel 1 # d\n# e\n1 wheel 1\n");
    EXPECT_EQ(trace.contacts, 2);
    EXPECT_EQ(trace.actions.size(), 2U);
}

TEST(TraceParserTest, QuotesAndBackslashesCanBeWrittenInQuotes) {
    EXPECT_EQ(parsed(R"(front 1 "a \"b\" \\ # c")").front->name, R"(a "b" \ # c)");
    EXPECT_EQ(parsed("front 1 a#b\\c").front->name, "a#b\\c");
}

TEST(TraceParserTest, WhatStandsUnderTheLineIsTakenAsItIs) {
    const Trace trace = parsed("0 wheel 1\n----\n0 consume\n\n# no comment\n----\n\n\n");

    ASSERT_TRUE(trace.expected);
    EXPECT_EQ(trace.expected->firstLine, 3);
    EXPECT_EQ(trace.expected->lines,
              (std::vector<std::string>{"0 consume", "", "# no comment", "----"}));
}

TEST(TraceParserTest, AnExpectationCanBeEmpty) {
    ASSERT_TRUE(parsed("----").expected);
    EXPECT_TRUE(parsed("----").expected->lines.empty());
}

TEST(TraceParserTest, AcceptsAByteOrderMarkAndCarriageReturns) {
    const Trace trace = parsed("\xEF\xBB\xBF"
                               "contacts 2\r\n\r\n0 script fail no \r\n----\r\n0 pass\r\n");

    EXPECT_EQ(trace.contacts, 2);
    EXPECT_EQ(std::get<ScriptFailure>(trace.actions.at(0).action).description, "no");
    EXPECT_EQ(trace.expected->lines, (std::vector<std::string>{"0 pass"}));
}

TEST(TraceParserTest, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(parsed("contacts 2").contacts, 2);
    EXPECT_EQ(parsed("----\n0 pass").expected->lines, (std::vector<std::string>{"0 pass"}));
}

} // namespace
} // namespace quillon
