#include "Platform/MacOS/MacDisplays.h"
#include "Platform/MacOS/MacEventMonitors.h"
#include "Platform/MacOS/OwnEventMark.h"
#include "Platform/MacOS/SystemDefinedEvents.h"

#include "fakes/FakeDesktop.h"
#include "fakes/FakeEvents.h"
#include "fakes/FakeNativeEvents.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeDesktop;
using fakes::fakeNativeEvents;
using Happening = fakes::FakeNativeEvents::Happening;

constexpr std::uint64_t scrollMask = 1ULL << 22U;
constexpr std::uint64_t outsideClickMask = 1ULL << 1U | 1ULL << 3U;

class NativeEventsTest : public testing::Test {
  protected:
    NativeEventsTest() {
        fakeNativeEvents().reset();
        fakeDesktop().reset();
    }

    EventMonitorRef listen(std::uint64_t mask) {
        return monitors.addGlobalMonitor(
            mask, [this](const MonitoredEvent& event) { heard.push_back(event); }, "tool");
    }

    MacEventMonitors monitors;
    std::vector<MonitoredEvent> heard;
};

TEST_F(NativeEventsTest, ASystemDefinedEventIsMadeOfTheGivenWords) {
    constexpr std::int64_t soundUpDown = 0 * 65536 + 0xA00;
    CGEventRef event = makeSystemDefinedEvent({.location = {3, 4},
                                               .modifierFlags = 0xA00,
                                               .timestamp = 1.5,
                                               .windowNumber = 7,
                                               .subtype = 8,
                                               .data1 = soundUpDown,
                                               .data2 = -1});
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(CGEventGetType(event), 14U);
    CFRelease(event);
    ASSERT_EQ(fakeNativeEvents().otherEventRequests.size(), 1U);
    const auto& request = fakeNativeEvents().otherEventRequests[0];
    EXPECT_EQ(request.type, 14U);
    EXPECT_EQ(request.location.x, 3);
    EXPECT_EQ(request.location.y, 4);
    EXPECT_EQ(request.modifierFlags, 0xA00U);
    EXPECT_EQ(request.timestamp, 1.5);
    EXPECT_EQ(request.windowNumber, 7);
    EXPECT_FALSE(request.hasContext);
    EXPECT_EQ(request.subtype, 8);
    EXPECT_EQ(request.data1, 2560);
    EXPECT_EQ(request.data2, -1);
}

TEST_F(NativeEventsTest, ASystemDefinedEventThatCannotBeMadeIsNull) {
    fakeNativeEvents().makesLowLevelForms = false;
    EXPECT_EQ(makeSystemDefinedEvent({}), nullptr);
    fakeNativeEvents().makesEvents = false;
    EXPECT_EQ(makeSystemDefinedEvent({}), nullptr);
    EXPECT_EQ(fakeNativeEvents().otherEventRequests.size(), 2U);
}

TEST_F(NativeEventsTest, AMonitorAsksForItsMask) {
    const auto scrolls = listen(scrollMask);
    const auto clicks = listen(outsideClickMask);
    EXPECT_EQ(fakeNativeEvents().monitorRequests, (std::vector<unsigned long long>{0x400000, 0xA}));
}

TEST_F(NativeEventsTest, AScrollIsReportedWithItsDeltas) {
    const auto monitor = listen(scrollMask);
    fakeNativeEvents().happen({.type = 22,
                               .scrollingDeltaX = 1.5,
                               .scrollingDeltaY = -2.5,
                               .deltaX = 0.25,
                               .deltaY = -0.5});
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].type, EventType::scrollWheel);
    EXPECT_EQ(heard[0].scrollingDeltaX, 1.5);
    EXPECT_EQ(heard[0].scrollingDeltaY, -2.5);
    EXPECT_EQ(heard[0].deltaX, 0.25);
    EXPECT_EQ(heard[0].deltaY, -0.5);
    EXPECT_EQ(fakeNativeEvents().forbiddenQuestions, 0);
}

TEST_F(NativeEventsTest, AButtonIsReportedWithItsNumber) {
    const auto monitor = listen(eventMask(EventType::otherMouseDown));
    fakeNativeEvents().happen({.type = 25, .buttonNumber = 2});
    fakeNativeEvents().happen({.type = 1});
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].type, EventType::otherMouseDown);
    EXPECT_EQ(heard[0].buttonNumber, MouseButton::middle);
    EXPECT_EQ(fakeNativeEvents().forbiddenQuestions, 0);
}

TEST_F(NativeEventsTest, WhatThisProgramHasPostedIsPassedOver) {
    const auto monitor = listen(eventMask(EventType::otherMouseDown));
    fakeNativeEvents().happen({.type = 25, .sourceUserData = ownEventMark});
    EXPECT_EQ(heard.size(), 0U);
    fakeNativeEvents().happen({.type = 25, .sourceUserData = ownEventMark + 1});
    fakeNativeEvents().happen({.type = 25, .hasLowLevelForm = false});
    EXPECT_EQ(heard.size(), 2U);
}

TEST_F(NativeEventsTest, ARefusedMonitorIsNull) {
    fakeNativeEvents().grantsMonitors = false;
    EXPECT_EQ(listen(scrollMask), nullptr);
}

TEST_F(NativeEventsTest, LettingGoOfTheLastReferenceRemovesTheMonitor) {
    auto monitor = listen(scrollMask);
    auto other = monitor;
    monitor.reset();
    EXPECT_EQ(fakeNativeEvents().monitorCount(), 1);
    other.reset();
    EXPECT_EQ(fakeNativeEvents().monitorCount(), 0);
    fakeNativeEvents().happen({.type = 22});
    EXPECT_EQ(heard.size(), 0U);
}

TEST_F(NativeEventsTest, AHandlerMayRemoveItsMonitor) {
    EventMonitorRef monitor;
    const auto held = std::make_shared<int>(0);
    long usesAfterwards = 0;
    monitor = monitors.addGlobalMonitor(
        scrollMask,
        [&, held](const MonitoredEvent&) {
            monitor.reset();
            usesAfterwards = held.use_count();
        },
        "tool");
    fakeNativeEvents().happen({.type = 22});
    EXPECT_EQ(usesAfterwards, 2) << "what the handler holds lives until it returns";
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(NativeEventsTest, ThePointerAndTheScreensAreTheSystems) {
    MacDisplays displays;
    fakeNativeEvents().mouseLocation = {-12.5, 1080};
    EXPECT_EQ(displays.mouseLocation(), (Point{-12.5, 1080}));
    EXPECT_EQ(displays.screens().size(), 0U);
    fakeDesktop().screens = {{{0, 0}, {1920, 1080}}, {{-1280, 56}, {1280, 1024}}};
    const auto screens = displays.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0], (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(screens[1], (Rect{-1280, 56, 1280, 1024}));
    EXPECT_EQ(displays.screens().size(), 2U) << "asked anew, not added";
}

} // namespace
} // namespace quillon
