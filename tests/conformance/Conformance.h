#pragma once

#include "World.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A test of what an interface promises, whichever platform keeps it.
class Conformance : public testing::Test {
  protected:
    explicit Conformance(const Circumstances& circumstances = {})
        : world(makeWorld(circumstances)) {}

    [[nodiscard]] Platform& platform() const { return world->platform(); }

    [[nodiscard]] bool until(const std::function<bool()>& condition) const {
        return world->runUntil(condition);
    }

    std::unique_ptr<World> world;
};

/// Leaves the test where the platform cannot be brought to it.
#define QUILLON_REQUIRE_ACT(act)                                                                   \
    if (const auto refusal = world->refusal(act)) {                                                \
        GTEST_SKIP() << *refusal;                                                                  \
    }                                                                                              \
    static_assert(true)

/// With the user's input, and another program that gets it.
class InputConformance : public Conformance {
  protected:
    using Received = std::vector<std::string>;

    InputConformance() { world->movePointer({200, 300}); }

    /// What the other program has received, once all that was done so far has come through. A
    /// click of the middle button, which no test taps or monitors, tells.
    [[nodiscard]] Received allReceived() {
        const auto marks = [this] {
            const auto all = world->received();
            return std::count(all.begin(), all.end(), endMark);
        };
        const auto before = marks();
        world->press(MouseButton::middle);
        world->release(MouseButton::middle);
        EXPECT_TRUE(until([&] { return marks() > before; }));
        auto all = world->received();
        std::erase_if(all, [](const std::string& one) { return one.ends_with(" 2"); });
        return all;
    }

  private:
    static constexpr const char* endMark = "release 2";
};

} // namespace quillon
