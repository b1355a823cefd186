#include "Platform/MacOS/MacScriptingService.h"

#include "fakes/FakeScripts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeScripts;

constexpr const char* source =
    R"(tell application "System Events" to key code 123 using {control down})";

class ScriptingServiceTest : public testing::Test {
  protected:
    ScriptingServiceTest() { fakeScripts().reset(); }

    MacScriptingService scripting;
};

TEST_F(ScriptingServiceTest, AScriptIsMadeOfItsSourceAndExecuted) {
    const auto script = scripting.compile(source);
    ASSERT_NE(script, nullptr);
    EXPECT_EQ(fakeScripts().sources, std::vector<std::string>{source});
    EXPECT_EQ(fakeScripts().executed.size(), 0U);
    EXPECT_EQ(script->execute(), std::nullopt);
    EXPECT_EQ(fakeScripts().executed, std::vector<std::string>{source});
}

TEST_F(ScriptingServiceTest, WhatDoesNotCompileIsNull) {
    fakeScripts().compiles = false;
    EXPECT_EQ(scripting.compile(source), nullptr);
    fakeScripts().reset();
    fakeScripts().makesScripts = false;
    EXPECT_EQ(scripting.compile(source), nullptr);
    fakeScripts().reset();
    EXPECT_EQ(scripting.compile("\xff"), nullptr) << "no text";
    EXPECT_EQ(fakeScripts().sources.size(), 0U);
}

TEST_F(ScriptingServiceTest, AFailureIsDescribedByTheWholeDictionary) {
    fakeScripts().failure = "Not authorised.";
    const auto failure = scripting.compile(source)->execute();
    ASSERT_TRUE(failure.has_value());
    EXPECT_NE(failure->find("NSAppleScriptErrorMessage"), std::string::npos) << *failure;
    EXPECT_NE(failure->find("Not authorised."), std::string::npos) << *failure;
}

} // namespace
} // namespace quillon
