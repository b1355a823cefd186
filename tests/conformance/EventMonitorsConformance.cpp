#include "Conformance.h"

#include <array>

namespace quillon {
namespace {

constexpr std::uint64_t scrolls = eventMask(EventType::scrollWheel);
constexpr std::uint64_t leftClicks =
    eventMask(EventType::leftMouseDown) | eventMask(EventType::leftMouseUp);

Event* consume(EventType /*type*/, Event* /*event*/, void* userInfo) {
    ++*static_cast<int*>(userInfo);
    return nullptr;
}

Event* reverse(EventType /*type*/, Event* event, void* userInfo) {
    ++*static_cast<int*>(userInfo);
    using enum EventField;
    if (event != nullptr) {
        constexpr std::array fields{scrollLineDeltaAxis1, scrollFixedPointDeltaAxis1,
                                    scrollPointDeltaAxis1};
        std::array<double, fields.size()> values{};
        std::transform(fields.begin(), fields.end(), values.begin(),
                       [&](EventField field) { return event->doubleValueField(field); });
        for (std::size_t i = 0; i < fields.size(); ++i) {
            event->setDoubleValueField(fields.at(i), -values.at(i));
        }
    }
    return event;
}

class EventMonitorsConformance : public InputConformance {
  protected:
    EventMonitorRef monitor(std::uint64_t mask) {
        auto made = platform().monitors.addGlobalMonitor(
            mask, [this](const MonitoredEvent& event) { seen.push_back(event); }, "monitor");
        EXPECT_TRUE(made);
        return made;
    }

    /// What was seen, once all that was done so far has been told. A monitor of the middle button
    /// tells.
    std::vector<EventType> allSeen() {
        int marks = 0;
        const auto marker = platform().monitors.addGlobalMonitor(
            eventMask(EventType::otherMouseUp), [&](const MonitoredEvent&) { ++marks; }, "marker");
        EXPECT_TRUE(marker);
        [[maybe_unused]] const auto received = allReceived();
        EXPECT_TRUE(until([&] { return marks == 1; }));
        std::vector<EventType> types;
        for (const MonitoredEvent& event : seen) {
            types.push_back(event.type);
        }
        return types;
    }

    struct Tapped {
        EventTapRef tap;
        RunLoopSourceRef source;
    };
    Tapped tap(EventTapCallback callback, std::uint64_t mask) {
        Tapped made;
        made.tap =
            platform().events.createTap(TapLocation::hid, TapPlacement::headInsert,
                                        TapOptions::filtering, mask, callback, &asked, "tap");
        EXPECT_TRUE(made.tap);
        platform().events.setArmedAt(*made.tap, [](Point, std::span<const Rect>) { return true; });
        made.source = platform().events.createRunLoopSource(made.tap);
        platform().runLoop.addSource(made.source);
        platform().events.enableTap(*made.tap, true);
        EXPECT_TRUE(world->awaitTaps(mask));
        return made;
    }

    using Types = std::vector<EventType>;
    std::vector<MonitoredEvent> seen;
    int asked = 0; // taps
};

TEST_F(EventMonitorsConformance, TellWhatTheyWereAskedForOnce) {
    const auto held = monitor(leftClicks);
    world->press(MouseButton::left);
    world->release(MouseButton::left);
    world->press(MouseButton::right);
    world->release(MouseButton::right);
    world->scroll(1);
    EXPECT_EQ(allSeen(), (Types{EventType::leftMouseDown, EventType::leftMouseUp}));
    EXPECT_EQ(seen[0].buttonNumber, MouseButton::left);
}

TEST_F(EventMonitorsConformance, TellTheLinesOfAScroll) {
    const auto held = monitor(scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return seen.size() == 1; }));
    world->scroll(-1);
    EXPECT_EQ(allSeen(), (Types{EventType::scrollWheel, EventType::scrollWheel}));
    EXPECT_EQ(seen[0].deltaY, 1);
    EXPECT_EQ(seen[1].deltaY, -1);
    EXPECT_GT(seen[0].scrollingDeltaY, 0);
    EXPECT_EQ(seen[0].deltaX, 0);
}

TEST_F(EventMonitorsConformance, SeveralAreToldTheSame) {
    const auto first = monitor(scrolls);
    const auto second = monitor(scrolls);
    world->scroll(1);
    EXPECT_EQ(allSeen().size(), 2U);
}

TEST_F(EventMonitorsConformance, OneThatWasLetGoOfIsToldNothing) {
    auto held = monitor(scrolls);
    held.reset();
    world->scroll(1);
    EXPECT_EQ(allSeen(), Types{});
}

TEST_F(EventMonitorsConformance, NothingThatATapConsumed) {
    const auto held = monitor(scrolls | leftClicks);
    const auto scrollTap = tap(consume, scrolls | eventMask(EventType::leftMouseDown));
    world->scroll(1);
    ASSERT_TRUE(until([&] { return asked == 1; }));
    world->press(MouseButton::left);
    ASSERT_TRUE(until([&] { return asked == 2; }));
    world->release(MouseButton::left);
    const auto types = allSeen();
    EXPECT_EQ(std::count(types.begin(), types.end(), EventType::scrollWheel), 0);
    EXPECT_EQ(std::count(types.begin(), types.end(), EventType::leftMouseDown), 0);
}

TEST_F(EventMonitorsConformance, TheRewrittenFormOfWhatATapChanged) {
    const auto held = monitor(scrolls);
    const auto reversing = tap(reverse, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return asked == 1; }));
    ASSERT_TRUE(until([&] { return !seen.empty(); }));
    EXPECT_EQ(allSeen(), Types{EventType::scrollWheel});
    EXPECT_EQ(seen[0].deltaY, -1);
}

TEST_F(EventMonitorsConformance, NothingThatTheProgramPostedItself) {
    const auto right = eventMask(EventType::rightMouseDown) | eventMask(EventType::rightMouseUp);
    const auto held = monitor(right);
    const auto other = tap(consume, scrolls); // so that there is who posts
    for (const auto type : {EventType::rightMouseDown, EventType::rightMouseUp}) {
        const EventRef event = platform().events.createMouseEvent(
            type, {200, world->mainScreen().height - 300}, MouseButton::right);
        ASSERT_TRUE(event);
        platform().events.post(TapLocation::hid, *event);
    }
    ASSERT_TRUE(until([&] { return world->received().size() == 2; }));
    EXPECT_EQ(allSeen(), Types{});
    world->press(MouseButton::right);
    world->release(MouseButton::right);
    EXPECT_EQ(allSeen(), (Types{EventType::rightMouseDown, EventType::rightMouseUp}))
        << "the user's own";
}

} // namespace
} // namespace quillon
