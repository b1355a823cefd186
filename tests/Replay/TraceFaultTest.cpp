#include "TraceTestSupport.h"

#include <ostream>
#include <string>

namespace quillon {
namespace {

struct Fault {
    std::string text;
    std::string message;
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << testing::PrintToString(fault.text); }

class TraceFaultTest : public testing::TestWithParam<Fault> {};

TEST_P(TraceFaultTest, NamesThePlaceAndTheReason) {
    EXPECT_EQ(fault(GetParam().text), GetParam().message);
}

std::string withNul(std::string text) {
    text.replace(text.find('0'), 1, 1, '\0');
    return text;
}

INSTANTIATE_TEST_SUITE_P(Text, TraceFaultTest,
                         testing::Values(Fault{withNul("# a\n# b0"), "2:4: a NUL character"},
                                         Fault{withNul("----\n0"), "2:1: a NUL character"},
                                         Fault{"# \xC3\xA4\xC3", "1:4: not valid UTF-8"},
                                         Fault{"# \xC3\n", "1:3: not valid UTF-8"},
                                         Fault{"\x80", "1:1: not valid UTF-8"},
                                         Fault{"\xC0\xAF", "1:1: not valid UTF-8"},
                                         Fault{"\xE0\x9F\xBF", "1:1: not valid UTF-8"},
                                         Fault{"\xED\xA0\x80", "1:1: not valid UTF-8"},
                                         Fault{"\xF0\x8F\xBF\xBF", "1:1: not valid UTF-8"},
                                         Fault{"\xF4\x90\x80\x80", "1:1: not valid UTF-8"},
                                         Fault{"\xF5\x80\x80\x80", "1:1: not valid UTF-8"},
                                         Fault{"----\n\xE2\x82", "2:1: not valid UTF-8"},
                                         Fault{"front 1 \xF0\x9F\x98\x80\xE2\x82\xAC\xC3\xA4 x",
                                               "1:13: nothing may follow here, but \"x\" does"},
                                         Fault{"\xEF\xBB\xBFx", "1:1: unknown statement \"x\""},
                                         Fault{"# a\r\nx\r\n", "2:1: unknown statement \"x\""},
                                         Fault{"contacts\r2", "1:9: a control character"},
                                         Fault{"front 1 \"a\x01\"", "1:11: a control character"},
                                         Fault{"0 script fail a\x7F",
                                               "1:16: a control character"}));

INSTANTIATE_TEST_SUITE_P(
    Words, TraceFaultTest,
    testing::Values(
        Fault{"scren 0 0 1 1", "1:1: unknown statement \"scren\"; did you mean screen?"},
        Fault{"Trust denied", "1:1: unknown statement \"Trust\"; did you mean trust?"},
        Fault{"\"trust\" denied", "1:1: unknown statement \"trust\"; did you mean trust?"},
        Fault{"0 \"wheel\" 1", "1:3: unknown statement \"wheel\"; did you mean wheel?"},
        Fault{"frobnicate", "1:1: unknown statement \"frobnicate\""},
        Fault{"0 frobnicate", "1:3: unknown statement \"frobnicate\""},
        Fault{"0 pres 1", "1:3: unknown statement \"pres\"; did you mean press?"},
        Fault{"tool tool.desktopSwitchr",
              "1:6: unknown tool \"tool.desktopSwitchr\"; did you mean tool.desktopSwitcher?"},
        Fault{"tool desktop", "1:6: unknown tool \"desktop\""},
        Fault{"0 drop tool.x", "1:8: unknown tool \"tool.x\""},
        Fault{"show scrip", "1:6: unknown kind of action \"scrip\"; did you mean script?"},
        Fault{"show tap taps", "1:10: unknown kind of action \"taps\"; did you mean tap?"},
        Fault{"trust maybe", "1:7: the answer is one of denied granted, not \"maybe\""},
        Fault{"trust \"denied\"",
              "1:7: the answer is one of denied granted, not \"denied\"; did you "
              "mean denied?"},
        Fault{"0 tapdisabled time", "1:15: the reason is one of timeout user, not \"time\""},
        Fault{"0 taps refuses",
              "1:8: the answer is one of refuse allow, not \"refuses\"; did you mean refuse?"},
        Fault{"0 script ok", "1:10: the result is one of fail, not \"ok\""},
        Fault{"0 tool tool.scrollReverse of",
              "1:27: the state is one of off on, not \"of\"; did you mean off?"},
        Fault{"tool tool.scrollReverse on",
              "1:25: only off may follow a tool's id at the start, not \"on\""},
        Fault{"0 scroll 1 fixd", "1:12: unknown option \"fixd\"; did you mean fixed?"},
        Fault{"0 scroll 1 phases=3", "1:12: unknown option \"phases\"; did you mean phase?"},
        Fault{"window 1 a 0 0 1 1 foo", "1:20: unknown option \"foo\""},
        Fault{"device volume=0 settable=vmvc,vol",
              "1:31: unknown control \"vol\"; did you mean volm?"},
        Fault{std::string(59, 'x') + "\xC3\xA4y",
              "1:1: unknown statement \"" + std::string(59, 'x') + "…\""},
        Fault{std::string(100, 'x'), "1:1: unknown statement \"" + std::string(60, 'x') + "…\""}));

INSTANTIATE_TEST_SUITE_P(
    Arguments, TraceFaultTest,
    testing::Values(
        Fault{"0", "1:2: a statement is missing"}, Fault{"0 pointer 1", "1:12: Y is missing"},
        Fault{"0 pointer 1 # 2", "1:13: Y is missing"}, Fault{"0 wheel", "1:8: DY is missing"},
        Fault{"0 scroll fixed", "1:10: PY is a number, not \"fixed\""},
        Fault{"screen 0 0 10", "1:14: the height is missing"},
        Fault{"front", "1:6: the process id is missing"},
        Fault{"window 1", "1:9: the owner's name is missing"},
        Fault{"device", "1:7: volume=V or none is missing"},
        Fault{"device muted", "1:8: the device's volume=V is missing"},
        Fault{"contacts", "1:9: the number of contacts is missing"},
        Fault{"tool", "1:5: a tool id is missing"},
        Fault{"show", "1:5: a kind of action is missing"},
        Fault{"show # tap", "1:6: a kind of action is missing"},
        Fault{"defaults", "1:9: the key is missing"},
        Fault{"defaults Key ", "1:14: a JSON value is missing"},
        Fault{"defaults@ Key 1", "1:1: the suite's name is missing after the @"},
        Fault{"0 set tool.scrollReverse", "1:25: the property is missing"},
        Fault{"0 set tool.scrollReverse isEnabled", "1:35: a JSON value is missing"},
        Fault{"0 script fail", "1:14: the error description is missing"},
        Fault{"0 close", "1:8: the process id is missing"},
        Fault{"0 tool tool.scrollReverse", "1:26: the state is missing"},
        Fault{"0 scroll 1 phase", "1:12: \"phase\" needs =VALUE"},
        Fault{"0 scroll 1 fixed=1", "1:12: \"fixed\" takes no value"},
        Fault{"0 scroll 1 lines=1", "1:18: lines takes two numbers: lines=DY,DX"},
        Fault{"0 scroll 1 lines=1,", "1:20: DX is a number, not \"\""},
        Fault{"0 wheel 1 2 3", "1:13: nothing may follow here, but \"3\" does"},
        Fault{"0 wheel 1 x", "1:11: nothing may follow here, but \"x\" does"},
        Fault{"0 press 1 1", "1:11: nothing may follow here, but \"1\" does"},
        Fault{"screen 0 0 1 1 1", "1:16: nothing may follow here, but \"1\" does"},
        Fault{"trust denied now", "1:14: nothing may follow here, but \"now\" does"},
        Fault{"device none muted", "1:13: nothing may follow here, but \"muted\" does"},
        Fault{"front 1 a b", "1:11: nothing may follow here, but \"b\" does"},
        Fault{"0 drop tool.scrollReverse x", "1:27: nothing may follow here, but \"x\" does"},
        Fault{"0 end 1", "1:7: nothing may follow here, but \"1\" does"},
        Fault{"tool tool.scrollReverse off off",
              "1:29: nothing may follow here, but \"off\" does"}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, TraceFaultTest,
    testing::Values(
        Fault{"0 pointer a 1", "1:11: X is a number, not \"a\""},
        Fault{"0 pointer 1x 1", "1:11: X is a number, not \"1x\""},
        Fault{"0 pointer \"1\" 1", "1:11: X is a number, not \"1\""},
        Fault{"0 pointer - 1", "1:11: X is a number, not \"-\""},
        Fault{"0 pointer +-1 1", "1:11: X is a number, not \"+-1\""},
        Fault{"0 pointer inf 1", "1:11: X is a number, not \"inf\""},
        Fault{"0 pointer -inf 1", "1:11: X is out of range: \"-inf\""},
        Fault{"0 pointer -nan 1", "1:11: X is out of range: \"-nan\""},
        Fault{"0 pointer 1e999 1", "1:11: X is out of range: \"1e999\""},
        Fault{"0 wheel 9223372036854775808", "1:9: DY is out of range: \"9223372036854775808\""},
        Fault{"0 press 3", "1:9: the button is out of range: \"3\""},
        Fault{"0 press left", "1:9: the button is a whole number, not \"left\""},
        Fault{"0 press -1", "1:9: the button is out of range: \"-1\""},
        Fault{"contacts 1.5", "1:10: the number of contacts is a whole number, not \"1.5\""},
        Fault{"contacts -1", "1:10: the number of contacts is out of range: \"-1\""},
        Fault{"contacts \"1\"", "1:10: the number of contacts is a whole number, not \"1\""},
        Fault{"front 0", "1:7: the process id is out of range: \"0\""},
        Fault{"front 2147483648", "1:7: the process id is out of range: \"2147483648\""},
        Fault{"screen 0 0 0 1", "1:12: the width is too small"},
        Fault{"screen 0 0 1 -1", "1:14: the height is too small"},
        Fault{"window 1 a 0 0 -1 1", "1:16: the width is too small"},
        Fault{"0 scroll 1 phase=a", "1:18: phase is a whole number, not \"a\""},
        Fault{"device volume=1.5",
              "1:15: the volume is a fraction of the full volume, not \"1.5\""},
        Fault{"device volume=-1", "1:15: the volume is a fraction of the full volume, not \"-1\""},
        Fault{"device volume=0 step=0",
              "1:22: the step is a fraction of the full volume, not \"0\""}));

INSTANTIATE_TEST_SUITE_P(
    Times, TraceFaultTest,
    testing::Values(
        Fault{"10 wheel 1\n9.999 wheel 1", "2:1: time goes back: 9.999 ms stands after 10 ms"},
        Fault{"-1 wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \"-1\""},
        Fault{"+-1 wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \"+-1\""},
        Fault{".5 wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \".5\""},
        Fault{"5. wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \"5.\""},
        Fault{"1e3 wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \"1e3\""},
        Fault{"10ms wheel 1",
              "1:1: a time is a number of milliseconds such as 250, 85.5 or +20, not \"10ms\""},
        Fault{"0.0001 wheel 1", "1:1: a time has at most three decimals: whole microseconds"},
        Fault{"86400000.001 end", "1:1: a trace lasts at most 86400000 ms, a day"},
        Fault{"18446744073709551617 end", "1:1: a trace lasts at most 86400000 ms, a day"},
        Fault{"99999999999999999999999999 end", "1:1: a trace lasts at most 86400000 ms, a day"},
        Fault{"86400000 wheel 1\n+0.001 end", "2:1: a trace lasts at most 86400000 ms, a day"},
        Fault{"wheel 1", "1:1: \"wheel\" needs a time before it"},
        Fault{"end", "1:1: \"end\" needs a time before it"},
        Fault{"0 show tap", "1:3: \"show\" describes the start and has no time"},
        Fault{"0 defaults@s k 1", "1:3: \"defaults@s\" describes the start and has no time"},
        Fault{"0 wheel 1\ntrust denied", "2:1: \"trust\" without a time describes the start and "
                                         "must stand before the first timed statement"},
        Fault{"5 end\n5 wheel 1", "2:1: nothing can happen after the end"},
        Fault{"5 end\n+0 end", "2:1: nothing can happen after the end"}));

INSTANTIATE_TEST_SUITE_P(
    Quotes, TraceFaultTest,
    testing::Values(
        Fault{"front 1 \"a", "1:9: the closing quote is missing"},
        Fault{"front 1 \"a\\", "1:11: in quotes a backslash stands before \" or \\ only"},
        Fault{"front 1 \"a\\n\"", "1:11: in quotes a backslash stands before \" or \\ only"},
        Fault{"front 1 \"a\"b", "1:12: a blank is missing after the closing quote"},
        Fault{"front 1 a\"b\"", "1:10: a quote inside a word; quote the whole word"}));

INSTANTIATE_TEST_SUITE_P(
    Duplicates, TraceFaultTest,
    testing::Values(Fault{"trust denied\ntrust denied", "2:1: \"trust\" is given twice"},
                    Fault{"front 1\nfront 2", "2:1: \"front\" is given twice"},
                    Fault{"device none\ndevice none", "2:1: \"device\" is given twice"},
                    Fault{"contacts 1\ncontacts 1", "2:1: \"contacts\" is given twice"},
                    Fault{"show tap\nshow log", "2:1: \"show\" is given twice"},
                    Fault{"show tap tap", "1:10: \"tap\" is given twice"},
                    Fault{"defaults a 1\ndefaults a 1", "2:10: the object of \"a\" is given twice"},
                    Fault{"defaults@s a 1\ndefaults@s a 1",
                          "2:12: the object of \"a\" is given twice"},
                    Fault{"0 scroll 1 fixed fixed", "1:18: \"fixed\" is given twice"},
                    Fault{"0 scroll 1 phase=1 phase=1", "1:20: \"phase\" is given twice"},
                    Fault{"device volume=0 settable=mute,mute", "1:31: \"mute\" is given twice"}));

INSTANTIATE_TEST_SUITE_P(
    Json, TraceFaultTest,
    testing::Values(
        Fault{"defaults \xC3\xA4 tru",
              "1:15: malformed JSON: syntax error while parsing value - invalid literal"},
        Fault{"defaults a true # b", "1:17: no comment can follow JSON on its line"},
        Fault{"defaults a [1,",
              "1:15: malformed JSON: syntax error while parsing value - unexpected end of input; "
              "expected '[', '{', or a literal"},
        Fault{"defaults a 1e999", "1:12: a number in this JSON is too large"},
        Fault{"defaults a NaN",
              "1:12: malformed JSON: syntax error while parsing value - invalid literal"},
        Fault{"defaults a " + std::string(1000, '['), "1:12: this JSON is nested too deeply"},
        Fault{"0 set tool.scrollReverse isEnabled yes",
              "1:36: malformed JSON: syntax error while parsing value - invalid literal"}));

TEST(TraceFaultOrderTest, ACharacterThatTheTextCutsOffIsNotFinishedByWhatLiesBehindIt) {
    EXPECT_EQ(fault(std::string_view("\xC3\xA4").substr(0, 1)), "1:1: not valid UTF-8");
}

TEST(TraceFaultOrderTest, TextThatIsNotUtf8IsRefusedBeforeAnythingElse) {
    EXPECT_EQ(fault("frobnicate\n\xFF"), "2:1: not valid UTF-8");
}

TEST(TraceFaultOrderTest, TheFirstFaultIsReported) {
    EXPECT_EQ(fault("contacts\nfrobnicate"), "1:9: the number of contacts is missing");
}

} // namespace
} // namespace quillon
