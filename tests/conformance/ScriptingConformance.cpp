#include "Conformance.h"

namespace quillon {
namespace {

constexpr const char* toTheRight =
    R"(tell application "System Events" to key code 124 using {control down})";

class ScriptingConformance : public Conformance {
  protected:
    /// What the script says of its end, run where it may block.
    std::optional<std::string> execute(const std::shared_ptr<Script>& script) {
        std::optional<std::string> failure;
        bool isDone = false;
        platform().runLoop.asyncBackground([&, script] {
            auto ended = script->execute();
            platform().runLoop.async([&, ended = std::move(ended)] {
                failure = ended;
                isDone = true;
            });
        });
        EXPECT_TRUE(until([&] { return isDone; }));
        return failure;
    }
};

TEST_F(ScriptingConformance, AScriptDoesWhatItSaysEachTimeItRuns) {
    const std::shared_ptr<Script> script = platform().scripting.compile(toTheRight);
    ASSERT_TRUE(script);
    EXPECT_EQ(world->desktopsMovedRight(), 0) << "it has not run";
    EXPECT_EQ(execute(script), std::nullopt);
    EXPECT_EQ(world->desktopsMovedRight(), 1);
    EXPECT_EQ(execute(script), std::nullopt);
    EXPECT_EQ(world->desktopsMovedRight(), 2);
}

TEST_F(ScriptingConformance, WhatDoesNotCompileIsNoScript) {
    const auto broken = world->brokenScript();
    EXPECT_EQ(platform().scripting.compile(broken), nullptr);
}

TEST_F(ScriptingConformance, AFailureIsDescribed) {
    world->failScripts();
    const std::shared_ptr<Script> script = platform().scripting.compile(toTheRight);
    ASSERT_TRUE(script);
    EXPECT_NE(execute(script).value_or(""), "");
    EXPECT_EQ(world->desktopsMovedRight(), 0);
}

} // namespace
} // namespace quillon
