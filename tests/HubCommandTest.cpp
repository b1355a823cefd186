#include "HubCommand.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

namespace quillon {
namespace {

using Form = HubRequest::Form;
using Outcome = HubReply::Outcome;
using Verb = HubRequest::Verb;

constexpr const char* hubStatus =
    R"({"busy":false,"tools":[)"
    R"({"id":"tool.a","name":"A+","subtitle":"Does a","installed":true,"enabled":true,)"
    R"("installing":false,"version":"1.2.0","downloaded":true},)"
    R"({"id":"tool.long","name":"Größe","subtitle":"","installed":true,"enabled":false,)"
    R"("installing":false,"version":"1.0.0","downloaded":false},)"
    R"({"id":"tool.c","name":"C","subtitle":"Does c","installed":false,"enabled":false,)"
    R"("installing":false},)"
    R"({"id":"tool.d","name":"D","subtitle":"Does d","installed":true,"enabled":true,)"
    R"("installing":true}]})";

struct HubCommandTest : testing::Test {
    HubReply running{Outcome::done, statusDocument(true, "1.2.3", hubStatus)};
    HubReply files{Outcome::done, statusDocument(false, "1.2.3", hubStatus)};
    int askedFiles = 0;
    std::ostringstream out;
    std::ostringstream err;

    int run(const HubRequest& request) {
        out.str("");
        err.str("");
        return hubCommand(
            request, [this](const HubRequest&) { return running; },
            [this](const HubRequest&) {
                ++askedFiles;
                return files;
            },
            out, err);
    }
};

TEST_F(HubCommandTest, ShowsTheStatusInColumns) {
    EXPECT_EQ(run({Verb::status}), 0);
    EXPECT_EQ(out.str(), "Quillon is running\n"
                         "A+      tool.a      on              1.2.0\n"
                         "Größe   tool.long   off\n"
                         "C       tool.c      not installed\n"
                         "D       tool.d      installing\n");
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(askedFiles, 0) << "a program runs: the files are its own";
}

TEST_F(HubCommandTest, ListsWhatThereIs) {
    EXPECT_EQ(run({Verb::list}), 0);
    EXPECT_EQ(out.str(), "A+      tool.a      installed       Does a\n"
                         "Größe   tool.long   installed\n"
                         "C       tool.c      not installed   Does c\n"
                         "D       tool.d      installed       Does d\n");
    EXPECT_EQ(run({Verb::list, "", Form::ids}), 0);
    EXPECT_EQ(out.str(), "tool.a\ntool.long\ntool.c\ntool.d\n");
}

TEST_F(HubCommandTest, PrintsJsonAndNothingElse) {
    running.text = R"({"running":true,"version":"1","busy":false,"tools":[{"id":"x","name":"y"}]})";
    EXPECT_EQ(run({Verb::status, "", Form::json}), 0);
    EXPECT_EQ(out.str(), "{\n"
                         "  \"running\": true,\n"
                         "  \"version\": \"1\",\n"
                         "  \"busy\": false,\n"
                         "  \"tools\": [\n"
                         "    {\n"
                         "      \"id\": \"x\",\n"
                         "      \"name\": \"y\"\n"
                         "    }\n"
                         "  ]\n"
                         "}\n");
    EXPECT_EQ(run({Verb::list, "", Form::json}), 0);
    EXPECT_EQ(out.str(), "[\n  {\n    \"id\": \"x\",\n    \"name\": \"y\"\n  }\n]\n");
}

TEST_F(HubCommandTest, TheFilesAnswerWhereNothingRuns) {
    running = {Outcome::notRunning};
    EXPECT_EQ(run({Verb::status}), 0);
    EXPECT_EQ(askedFiles, 1);
    EXPECT_TRUE(out.str().starts_with("Quillon is not running\n")) << out.str();
}

TEST_F(HubCommandTest, ChangesSayNothing) {
    for (const auto verb : {Verb::enable, Verb::disable, Verb::install, Verb::uninstall}) {
        running = {};
        EXPECT_EQ(run({verb, "tool.a"}), 0);
        EXPECT_EQ(out.str() + err.str(), "");
    }
}

TEST_F(HubCommandTest, SaysWhyItFailed) {
    running = {Outcome::failed, "there is no tool\n'x'"};
    EXPECT_EQ(run({Verb::enable, "x"}), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "quillon: there is no tool 'x'\n");
    EXPECT_EQ(askedFiles, 0);
}

TEST_F(HubCommandTest, NobodyToShowOrToQuit) {
    running = {Outcome::notRunning};
    files = {Outcome::notRunning};
    for (const auto verb : {Verb::show, Verb::quit}) {
        EXPECT_EQ(run({verb}), 3);
        EXPECT_EQ(err.str(), "quillon: Quillon is not running\n");
    }
}

TEST_F(HubCommandTest, NamesCannotCommandTheTerminal) {
    running.text = R"({"running":true,"tools":[{"id":"x\u001b[2J","name":"a\n\u009bb\u007f"}]})";
    EXPECT_EQ(run({Verb::status}), 0);
    EXPECT_EQ(out.str(), "Quillon is running\na  b    x [2J   not installed\n");
}

TEST_F(HubCommandTest, WhatIsNoStatusIsRefused) {
    for (const char* text :
         {"", "[]", "{}", R"({"tools":{}})", R"({"tools":[1]})", "{\"tools\":"}) {
        running.text = text;
        EXPECT_EQ(run({Verb::status}), 1) << text;
        EXPECT_EQ(out.str(), "");
        EXPECT_TRUE(err.str().starts_with("quillon: ")) << err.str();
    }
}

TEST_F(HubCommandTest, OutputThatCannotBeWrittenIsAFailure) {
    out.setstate(std::ios::badbit);
    EXPECT_EQ(run({Verb::status}), 1);
    EXPECT_NE(err.str(), "");
}

TEST(StatusDocument, HasTheProgramInFront) {
    EXPECT_EQ(statusDocument(false, "1.2.3", R"({"busy":true,"tools":[]})"),
              R"({"running":false,"version":"1.2.3","busy":true,"tools":[]})");
}

} // namespace
} // namespace quillon
