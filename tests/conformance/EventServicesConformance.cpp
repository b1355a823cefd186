#include "Conformance.h"

#include <utility>

namespace quillon {
namespace {

constexpr std::uint64_t scrolls = eventMask(EventType::scrollWheel);
constexpr std::uint64_t leftPresses = eventMask(EventType::leftMouseDown);

/// A tap that does as it is told, and writes down what it is asked.
struct Probe {
    enum class Does { pass, consume, reverse };

    Does does = Does::pass;
    std::vector<EventType> types;
    std::vector<double> lines; // of scrolls
    std::vector<Point> places; // origin top left
    std::vector<Probe*>* order = nullptr;

    static Event* callback(EventType type, Event* event, void* userInfo) {
        auto& probe = *static_cast<Probe*>(userInfo);
        probe.types.push_back(type);
        if (event == nullptr) {
            return nullptr;
        }
        if (probe.order != nullptr) {
            probe.order->push_back(&probe);
        }
        probe.places.push_back(event->location());
        probe.lines.push_back(event->doubleValueField(EventField::scrollLineDeltaAxis1));
        if (probe.does == Does::reverse) {
            reverse(*event);
        }
        return probe.does == Does::consume ? nullptr : event;
    }

    static void reverse(Event& event) {
        using enum EventField;
        // The points are derived from the lines when those are set, so all are read before.
        constexpr std::array fields{scrollLineDeltaAxis1,       scrollLineDeltaAxis2,
                                    scrollFixedPointDeltaAxis1, scrollFixedPointDeltaAxis2,
                                    scrollPointDeltaAxis1,      scrollPointDeltaAxis2};
        std::array<double, fields.size()> values{};
        std::transform(fields.begin(), fields.end(), values.begin(),
                       [&](EventField field) { return event.doubleValueField(field); });
        for (std::size_t i = 0; i < fields.size(); ++i) {
            event.setDoubleValueField(fields.at(i), -values.at(i));
        }
    }
};

class EventServicesConformance : public InputConformance {
  protected:
    /// Made, but neither enabled nor on the run loop.
    EventTapRef make(Probe& probe, std::uint64_t mask, TapOptions options = TapOptions::filtering) {
        auto tap = events().createTap(TapLocation::hid, TapPlacement::headInsert, options, mask,
                                      Probe::callback, &probe, "probe");
        if (tap) {
            events().setArmedAt(*tap, [](Point, std::span<const Rect>) { return true; });
        }
        return tap;
    }

    struct Running {
        EventTapRef tap;
        RunLoopSourceRef source;
    };
    Running run(Probe& probe, std::uint64_t mask, TapOptions options = TapOptions::filtering) {
        Running running{make(probe, mask, options), nullptr};
        EXPECT_TRUE(running.tap);
        running.source = events().createRunLoopSource(running.tap);
        platform().runLoop.addSource(running.source);
        events().enableTap(*running.tap, true);
        EXPECT_TRUE(world->awaitTaps(mask));
        return running;
    }

    [[nodiscard]] EventServices& events() const { return platform().events; }
};

TEST_F(EventServicesConformance, ATapGetsWhatItAskedForAndPassesIt) {
    Probe probe;
    const auto running = run(probe, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    world->scroll(-1);
    ASSERT_TRUE(until([&] { return probe.types.size() == 2; }));
    world->press(MouseButton::left);
    world->release(MouseButton::left);
    EXPECT_EQ(allReceived(), (Received{"scroll 1", "scroll -1", "press 0", "release 0"}));
    EXPECT_EQ(probe.types, (std::vector{EventType::scrollWheel, EventType::scrollWheel}));
    EXPECT_EQ(probe.lines, (std::vector<double>{1, -1}));
}

TEST_F(EventServicesConformance, EventsSayWhereThePointerIsFromTheTopLeft) {
    Probe probe;
    const auto running = run(probe, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.places.empty(); }));
    EXPECT_EQ(probe.places[0], (Point{200, world->mainScreen().height - 300}));
}

TEST_F(EventServicesConformance, ConsumedScrollsReachNobody) {
    Probe probe{.does = Probe::Does::consume};
    const auto running = run(probe, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    EXPECT_EQ(allReceived(), Received{});
}

TEST_F(EventServicesConformance, ConsumedPressesReachNobody) {
    Probe probe{.does = Probe::Does::consume};
    const auto running = run(probe, leftPresses);
    world->press(MouseButton::left);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    world->release(MouseButton::left);
    const auto all = allReceived();
    EXPECT_EQ(std::count(all.begin(), all.end(), "press 0"), 0);
    EXPECT_EQ(probe.types, std::vector{EventType::leftMouseDown});
}

TEST_F(EventServicesConformance, PassedPressesComeOnceWithTheirReleases) {
    Probe probe;
    const auto running = run(probe, leftPresses);
    world->press(MouseButton::left);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    world->release(MouseButton::left);
    EXPECT_EQ(allReceived(), (Received{"press 0", "release 0"}));
}

TEST_F(EventServicesConformance, RightPressesAreTappedToo) {
    QUILLON_REQUIRE_ACT(Act::tapRightPresses);
    Probe probe{.does = Probe::Does::consume};
    const auto running = run(probe, eventMask(EventType::rightMouseDown));
    world->press(MouseButton::right);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    const auto all = allReceived();
    EXPECT_EQ(std::count(all.begin(), all.end(), "press 1"), 0);
    EXPECT_EQ(probe.types, std::vector{EventType::rightMouseDown});
}

TEST_F(EventServicesConformance, RewrittenScrollsAreWhatLaterTapsAndProgramsSee) {
    Probe older;
    Probe newer{.does = Probe::Does::reverse};
    const auto a = run(older, scrolls);
    const auto b = run(newer, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !older.lines.empty(); }));
    EXPECT_EQ(newer.lines, std::vector<double>{1});
    EXPECT_EQ(older.lines, std::vector<double>{-1});
    EXPECT_TRUE(until([&] { return !world->received().empty(); }));
    EXPECT_EQ(allReceived(), Received{"scroll -1"});
}

TEST_F(EventServicesConformance, NewestTapRunsFirst) {
    std::vector<Probe*> order;
    Probe older{.order = &order};
    Probe newer{.order = &order};
    const auto a = run(older, scrolls);
    const auto b = run(newer, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector{&newer, &older}));
}

TEST_F(EventServicesConformance, WhatTheNewestConsumesOlderOnesNeverSee) {
    Probe older;
    Probe newer{.does = Probe::Does::consume};
    const auto a = run(older, scrolls);
    const auto b = run(newer, scrolls);
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !newer.types.empty(); }));
    EXPECT_EQ(allReceived(), Received{});
    EXPECT_TRUE(older.types.empty());
}

TEST_F(EventServicesConformance, AListenOnlyTapNeitherConsumesNorRewrites) {
    QUILLON_REQUIRE_ACT(Act::tapListenOnly);
    for (const auto does : {Probe::Does::consume, Probe::Does::reverse}) {
        Probe older;
        Probe newer{.does = does};
        const auto a = run(older, scrolls);
        const auto b = run(newer, scrolls, TapOptions::listenOnly);
        const auto before = allReceived().size();
        world->scroll(1);
        ASSERT_TRUE(until([&] { return !older.lines.empty(); }));
        EXPECT_EQ(newer.lines, std::vector<double>{1});
        EXPECT_EQ(older.lines, std::vector<double>{1});
        const auto after = allReceived();
        ASSERT_EQ(after.size(), before + 1);
        EXPECT_EQ(after.back(), "scroll 1");
    }
}

TEST_F(EventServicesConformance, AReleasedTapGetsNothing) {
    Probe probe{.does = Probe::Does::consume};
    auto running = run(probe, scrolls);
    running = {};
    world->scroll(1);
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
    EXPECT_TRUE(probe.types.empty());
}

TEST_F(EventServicesConformance, ATapStartsDisabledAndGetsNothingUntilItIsEnabled) {
    Probe probe{.does = Probe::Does::consume};
    const auto tap = make(probe, scrolls);
    ASSERT_TRUE(tap);
    const auto source = events().createRunLoopSource(tap);
    platform().runLoop.addSource(source);
    world->scroll(1);
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
    EXPECT_TRUE(probe.types.empty());
    events().enableTap(*tap, true);
    ASSERT_TRUE(world->awaitTaps(scrolls));
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
}

TEST_F(EventServicesConformance, ADisabledTapGetsNothingUntilItIsEnabledAgain) {
    Probe probe{.does = Probe::Does::consume};
    const auto running = run(probe, scrolls);
    events().enableTap(*running.tap, false);
    world->scroll(1);
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
    EXPECT_TRUE(probe.types.empty());
    events().enableTap(*running.tap, true);
    ASSERT_TRUE(world->awaitTaps(scrolls));
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
}

TEST_F(EventServicesConformance, WithoutASourceOnTheRunLoopEventsPass) {
    Probe probe{.does = Probe::Does::consume};
    const auto running = run(probe, scrolls);
    platform().runLoop.removeSource(running.source);
    world->scroll(1);
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
    EXPECT_TRUE(probe.types.empty());
    platform().runLoop.addSource(running.source);
    ASSERT_TRUE(world->awaitTaps(scrolls));
    world->scroll(1);
    ASSERT_TRUE(until([&] { return !probe.types.empty(); }));
    EXPECT_EQ(allReceived(), Received{"scroll 1"});
}

TEST_F(EventServicesConformance, PostedClicksReachThePrograms) {
    Probe probe;
    const auto running = run(probe, scrolls);
    const Point place{200, world->mainScreen().height - 300};
    for (const auto type : {EventType::rightMouseDown, EventType::rightMouseUp}) {
        const EventRef event = events().createMouseEvent(type, place, MouseButton::right);
        ASSERT_TRUE(event);
        EXPECT_EQ(event->location(), place);
        events().post(TapLocation::hid, *event);
    }
    ASSERT_TRUE(until([&] { return world->received().size() == 2; }));
    EXPECT_EQ(allReceived(), (Received{"press 1", "release 1"}));
}

TEST_F(EventServicesConformance, AnEventOfNoTypeIsAtThePointersPlace) {
    ASSERT_TRUE(until([&] { return platform().displays.mouseLocation() == Point{200, 300}; }));
    const EventRef event = events().createEvent();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->location(), (Point{200, world->mainScreen().height - 300}));
}

class UntrustedConformance : public Conformance {
  protected:
    UntrustedConformance() : Conformance({.isTrusted = false}) {}
};

TEST_F(UntrustedConformance, ThereIsNoTap) {
    Probe probe;
    EXPECT_FALSE(platform().accessibility.isProcessTrusted());
    EXPECT_EQ(platform().events.createTap(TapLocation::hid, TapPlacement::headInsert,
                                          TapOptions::filtering, scrolls, Probe::callback, &probe,
                                          "probe"),
              nullptr);
}

} // namespace
} // namespace quillon
