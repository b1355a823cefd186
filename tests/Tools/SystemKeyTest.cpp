#include "Tools/SystemKey.h"

#include "Platform/FieldEvent.h"
#include "support/ToolBench.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

/// Writes down what is made and posted, and can be short of either half of a key.
class RecordingEvents final : public EventServices {
  public:
    EventTapRef createTap(TapLocation, TapPlacement, TapOptions, std::uint64_t, EventTapCallback,
                          void*, std::string_view) override {
        return nullptr;
    }
    RunLoopSourceRef createRunLoopSource(const EventTapRef&) override { return nullptr; }
    void enableTap(EventTap&, bool) override {}
    void setInvalidationHandler(EventTap&, std::function<void()>) override {}
    void setArmedAt(EventTap&, ArmedAt) override {}
    void setConstantRewrite(EventTap&, ConstantRewrite) override {}
    EventRef createEvent() override { return nullptr; }
    EventRef createMouseEvent(EventType, Point, MouseButton) override { return nullptr; }
    EventRef createSystemDefinedEvent(const SystemDefinedEvent& event) override {
        return event.modifierFlags == missingHalf ? nullptr : std::make_unique<FieldEvent>(event);
    }
    void post(TapLocation location, const Event& event) override {
        EXPECT_EQ(location, TapLocation::hid);
        const auto& made = static_cast<const FieldEvent&>(event);
        EXPECT_EQ(made.type(), EventType::systemDefined);
        posted.push_back(made.systemDefined().value());
    }
    void setPanicHandler(std::function<void()>) override {}

    std::uint64_t missingHalf = 0;
    std::vector<SystemDefinedEvent> posted;
};

TEST(SystemKeyTest, IsPressedAndLetGoInTheWordsOfTheSystemsKeyboards) {
    RecordingEvents events;
    postSystemKey(events, SystemKey::next);
    ASSERT_EQ(events.posted.size(), 2U);
    for (const SystemDefinedEvent& event : events.posted) {
        EXPECT_EQ(event.location, Point{});
        EXPECT_EQ(event.timestamp, 0);
        EXPECT_EQ(event.windowNumber, 0);
        EXPECT_EQ(event.subtype, 8);
        EXPECT_EQ(event.data2, -1);
    }
    EXPECT_EQ(events.posted[0].modifierFlags, 0xA00U);
    EXPECT_EQ(events.posted[0].data1, 0x110A00);
    EXPECT_EQ(events.posted[1].modifierFlags, 0xB00U);
    EXPECT_EQ(events.posted[1].data1, 0x110B00);
}

TEST(SystemKeyTest, EachHasItsCode) {
    ToolBench bench;
    for (const SystemKey key : {SystemKey::soundUp, SystemKey::soundDown, SystemKey::play,
                                SystemKey::next, SystemKey::previous}) {
        postSystemKey(bench.desktop.events, key);
    }
    EXPECT_EQ(bench.take("key"), (std::vector<std::string>{"0", "1", "16", "17", "18"}));
}

TEST(SystemKeyTest, IsNotPostedByHalves) {
    RecordingEvents events;
    for (const std::uint64_t half : {0xA00U, 0xB00U}) {
        events.missingHalf = half;
        postSystemKey(events, SystemKey::soundUp);
    }
    EXPECT_TRUE(events.posted.empty());
}

} // namespace
} // namespace quillon
