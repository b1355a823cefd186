#include "CommandLine.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace quillon {
namespace {

Request parse(std::initializer_list<const char*> words) {
    std::vector<const char*> arguments{"quillon"};
    arguments.insert(arguments.end(), words);
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), "1.2.3");
}

TEST(CommandLine, WithoutACommandItRuns) {
    EXPECT_TRUE(std::holds_alternative<RunRequest>(parse({})));
}

TEST(CommandLine, PrintsVersionAndHelp) {
    const auto version = std::get<PrintRequest>(parse({"--version"}));
    EXPECT_EQ(version.output, "quillon 1.2.3\n");
    EXPECT_EQ(version.status, 0);
    const auto help = std::get<PrintRequest>(parse({"--help"}));
    EXPECT_EQ(help.status, 0);
    for (const char* word : {"replay", "defaults", "--version"}) {
        EXPECT_NE(help.output.find(word), std::string::npos) << word;
    }
}

TEST(CommandLine, UnknownOptionIsAnErrorWithAHint) {
    const auto print = std::get<PrintRequest>(parse({"--frobnicate"}));
    EXPECT_EQ(print.status, 2);
    EXPECT_TRUE(print.output.empty());
    EXPECT_NE(print.error.find("--frobnicate"), std::string::npos) << print.error;
    EXPECT_NE(print.error.find("--help"), std::string::npos) << print.error;
}

TEST(CommandLine, UnknownCommandIsAnError) {
    const auto print = std::get<PrintRequest>(parse({"dance"}));
    EXPECT_EQ(print.status, 2);
    EXPECT_NE(print.error.find("dance"), std::string::npos);
}

TEST(CommandLine, Replay) {
    const auto plain = std::get<ReplayRequest>(parse({"replay", "a.trace"}));
    EXPECT_EQ(plain.file, "a.trace");
    EXPECT_FALSE(plain.check);
    EXPECT_TRUE(std::get<ReplayRequest>(parse({"replay", "--check", "a.trace"})).check);
    EXPECT_EQ(std::get<PrintRequest>(parse({"replay"})).status, 2) << "the file is missing";
}

TEST(CommandLine, Defaults) {
    const auto write =
        std::get<DefaultsRequest>(parse({"defaults", "write", "Tool4LeftEdge", "true"}));
    EXPECT_EQ(write.verb, DefaultsRequest::Verb::write);
    EXPECT_EQ(write.key, "Tool4LeftEdge");
    EXPECT_EQ(write.json, "true");
    const auto read =
        std::get<DefaultsRequest>(parse({"defaults", "--suite", "com.x", "read", "Key"}));
    EXPECT_EQ(read.verb, DefaultsRequest::Verb::read);
    EXPECT_EQ(read.suite, "com.x");
    EXPECT_EQ(std::get<DefaultsRequest>(parse({"defaults", "delete", "Key"})).verb,
              DefaultsRequest::Verb::remove);
    EXPECT_EQ(std::get<PrintRequest>(parse({"defaults"})).status, 2);
    EXPECT_EQ(std::get<DefaultsRequest>(parse({"defaults", "write", "Key", "-4.5"})).json, "-4.5");
}

TEST(CommandLine, ReadsTheHub) {
    using Form = HubRequest::Form;
    using Verb = HubRequest::Verb;
    const auto status = std::get<HubRequest>(parse({"status"}));
    EXPECT_EQ(status.verb, Verb::status);
    EXPECT_EQ(status.form, Form::text);
    EXPECT_EQ(std::get<HubRequest>(parse({"status", "--json"})).form, Form::json);
    const auto list = std::get<HubRequest>(parse({"list", "--json"}));
    EXPECT_EQ(list.verb, Verb::list);
    EXPECT_EQ(list.form, Form::json);
    EXPECT_EQ(std::get<HubRequest>(parse({"list", "--ids"})).form, Form::ids);
    EXPECT_EQ(std::get<PrintRequest>(parse({"list", "--ids", "--json"})).status, 2);
    EXPECT_EQ(std::get<PrintRequest>(parse({"status", "--ids"})).status, 2);
    EXPECT_EQ(std::get<PrintRequest>(parse({"status", "tool.x"})).status, 2);
}

TEST(CommandLine, ChangesTheHub) {
    using Verb = HubRequest::Verb;
    for (const auto& [name, verb] :
         {std::pair("enable", Verb::enable), std::pair("disable", Verb::disable),
          std::pair("install", Verb::install), std::pair("uninstall", Verb::uninstall)}) {
        const auto request = std::get<HubRequest>(parse({name, "tool.Some thing"}));
        EXPECT_EQ(request.verb, verb) << name;
        EXPECT_EQ(request.id, "tool.Some thing");
        EXPECT_EQ(std::get<PrintRequest>(parse({name})).status, 2) << "which tool?";
        EXPECT_EQ(std::get<PrintRequest>(parse({name, "a", "b"})).status, 2) << "one at a time";
    }
    EXPECT_EQ(std::get<HubRequest>(parse({"show"})).verb, Verb::show);
    EXPECT_EQ(std::get<HubRequest>(parse({"quit"})).verb, Verb::quit);
    EXPECT_EQ(std::get<PrintRequest>(parse({"quit", "now"})).status, 2);
}

TEST(CommandLine, TheHelpNamesTheExitStatuses) {
    const auto help = std::get<PrintRequest>(parse({"--help"})).output;
    for (const char* part : {"status", "uninstall", "2 wrong usage", "3 Quillon is not running"}) {
        EXPECT_NE(help.find(part), std::string::npos) << part;
    }
}

TEST(CommandLine, ShowLevelIsThereButNotInTheHelp) {
    const auto one = std::get<ShowLevelRequest>(parse({"show-level", "40"}));
    EXPECT_EQ(one.percents, (std::vector{40.0}));
    EXPECT_EQ(one.milliseconds, 0U);
    const auto some =
        std::get<ShowLevelRequest>(parse({"show-level", "0", "99.5", "100", "--every", "16"}));
    EXPECT_EQ(some.percents, (std::vector{0.0, 99.5, 100.0}));
    EXPECT_EQ(some.milliseconds, 16U);
    for (const char* wrong : {"101", "-1", "nan", "inf", "loud"}) {
        EXPECT_EQ(std::get<PrintRequest>(parse({"show-level", wrong})).status, 2) << wrong;
    }
    EXPECT_EQ(std::get<PrintRequest>(parse({"show-level"})).status, 2);
    EXPECT_EQ(std::get<PrintRequest>(parse({"show-level", "1", "--every", "-5"})).status, 2);
    EXPECT_EQ(std::get<PrintRequest>(parse({"--help"})).output.find("show-level"),
              std::string::npos);
}

} // namespace
} // namespace quillon
