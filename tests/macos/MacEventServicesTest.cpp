#include "Platform/MacOS/MacEventServices.h"

#include "Platform/Simulated/VirtualRunLoop.h"

#include "ServicesTest.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeCoreFoundation;
using fakes::FakeCoreFoundation;
using fakes::fakeEvents;

/// A tap's owner, which does as it is told and writes down what it is asked.
struct Owner {
    std::function<Event*(EventType, Event*)> answer = [](EventType, Event* event) { return event; };
    std::vector<EventType> types;
    bool wasGivenAnEvent = false;

    static Event* callback(EventType type, Event* event, void* userInfo) {
        auto& owner = *static_cast<Owner*>(userInfo);
        owner.types.push_back(type);
        owner.wasGivenAnEvent = event != nullptr;
        return owner.answer(type, event);
    }
};

class MacEventServicesTest : public ServicesTest {
  protected:
    EventTapRef createTap(EventType type = EventType::scrollWheel,
                          TapOptions options = TapOptions::filtering) {
        return events.createTap(TapLocation::hid, TapPlacement::headInsert, options,
                                eventMask(type), &Owner::callback, &owner, "tool.test");
    }

    /// On the main run loop, and enabled.
    void install(EventType type = EventType::scrollWheel,
                 TapOptions options = TapOptions::filtering) {
        tap = createTap(type, options);
        ASSERT_TRUE(tap);
        source = events.createRunLoopSource(tap);
        ASSERT_TRUE(source);
        runLoop.addSource(source);
        events.enableTap(*tap, true);
    }

    /// As the tools do it.
    void remove() {
        runLoop.removeSource(source);
        source.reset();
        events.enableTap(*tap, false);
        tap.reset();
    }

    VirtualRunLoop runLoop;
    MacEventServices events{runLoop};
    Owner owner;
    EventTapRef tap;
    RunLoopSourceRef source;
};

const fakes::FakeEvents::Fields oneLine{{kCGScrollWheelEventDeltaAxis1, 1}};

TEST_F(MacEventServicesTest, ScrollTapIsAFilterAtTheHeadOfTheHardwareLevel) {
    tap = createTap();
    ASSERT_EQ(fakeEvents().tapRequests.size(), 1U);
    const auto& request = fakeEvents().tapRequests[0];
    EXPECT_EQ(static_cast<int>(request.location), 0);
    EXPECT_EQ(static_cast<int>(request.placement), 0);
    EXPECT_EQ(static_cast<int>(request.options), 0);
    EXPECT_EQ(request.eventsOfInterest, 4194304U);
    EXPECT_NE(request.callback, nullptr);
}

TEST_F(MacEventServicesTest, LeftPressTapIsForThePressAlone) {
    tap = createTap(EventType::leftMouseDown);
    EXPECT_EQ(fakeEvents().tapRequests.at(0).eventsOfInterest, 2U);
}

TEST_F(MacEventServicesTest, ListenOnlyIsOptionOne) {
    tap = createTap(EventType::scrollWheel, TapOptions::listenOnly);
    EXPECT_EQ(static_cast<int>(fakeEvents().tapRequests.at(0).options), 1);
}

TEST_F(MacEventServicesTest, NoTapWhenTheSystemGrantsNone) {
    fakeEvents().grantsTaps = false;
    EXPECT_EQ(createTap(), nullptr);
}

TEST_F(MacEventServicesTest, TapStartsDisabledAndOnNoRunLoop) {
    tap = createTap();
    const auto port = fakeEvents().taps().at(0);
    EXPECT_FALSE(fakeEvents().isEnabled(port));
    EXPECT_EQ(FakeCoreFoundation::modesOf(port), std::vector<std::string>{});
    events.enableTap(*tap, true);
    EXPECT_TRUE(fakeEvents().isEnabled(port));
    events.enableTap(*tap, false);
    EXPECT_FALSE(fakeEvents().isEnabled(port));
}

TEST_F(MacEventServicesTest, SourceIsOnTheMainRunLoopInTheCommonModes) {
    tap = createTap();
    source = events.createRunLoopSource(tap);
    ASSERT_TRUE(source);
    EXPECT_EQ(fakeCoreFoundation().sourceOrders, std::vector<CFIndex>{0});
    const auto port = fakeEvents().taps().at(0);
    EXPECT_EQ(FakeCoreFoundation::modesOf(port), std::vector<std::string>{});
    runLoop.addSource(source);
    EXPECT_EQ(FakeCoreFoundation::modesOf(port), std::vector<std::string>{"kCFRunLoopCommonModes"});
    runLoop.removeSource(source);
    EXPECT_EQ(FakeCoreFoundation::modesOf(port), std::vector<std::string>{});
}

TEST_F(MacEventServicesTest, NoSourceWhenTheSystemMakesNone) {
    tap = createTap();
    fakeCoreFoundation().makesSources = false;
    EXPECT_EQ(events.createRunLoopSource(tap), nullptr);
}

TEST_F(MacEventServicesTest, RemovedInOrder) {
    install();
    fakeCoreFoundation().calls.clear();
    remove();
    EXPECT_EQ(fakeCoreFoundation().calls,
              (std::vector<std::string>{
                  "CFRunLoopRemoveSource(kCFRunLoopCommonModes)", "CGEventTapEnable(false)",
                  "CFMachPortSetInvalidationCallBack(null)", "CFMachPortInvalidate"}));
    EXPECT_TRUE(fakeEvents().taps().empty());
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_TRUE(owner.types.empty());
}

TEST_F(MacEventServicesTest, LettingGoOfTheTapTakesItsSourceOffTheRunLoop) {
    install();
    const auto port = fakeEvents().taps().at(0);
    tap.reset();
    EXPECT_TRUE(fakeEvents().taps().empty());
    EXPECT_EQ(FakeCoreFoundation::modesOf(port), std::vector<std::string>{});
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_TRUE(owner.types.empty());
    runLoop.removeSource(source); // what is left of it
}

TEST_F(MacEventServicesTest, OwnerIsAskedAndLetsPassOrConsumes) {
    install();
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_EQ(owner.types, std::vector{EventType::scrollWheel});
    EXPECT_TRUE(owner.wasGivenAnEvent);
    owner.answer = [](EventType, Event*) { return nullptr; };
    EXPECT_FALSE(fakeEvents().scroll(oneLine));
    EXPECT_EQ(fakeEvents().arrived.size(), 1U);
}

TEST_F(MacEventServicesTest, PressesAreToldWithTheirType) {
    install(EventType::leftMouseDown);
    EXPECT_TRUE(fakeEvents().press(kCGMouseButtonLeft));
    EXPECT_TRUE(fakeEvents().release(kCGMouseButtonLeft));
    EXPECT_EQ(owner.types, std::vector{EventType::leftMouseDown});
}

TEST_F(MacEventServicesTest, FieldsHaveTheSystemsNumbers) {
    install();
    using enum EventField;
    const std::vector<std::pair<EventField, std::uint32_t>> fields{
        {scrollLineDeltaAxis1, 11},       {scrollLineDeltaAxis2, 12},
        {scrollIsContinuous, 88},         {scrollFixedPointDeltaAxis1, 93},
        {scrollFixedPointDeltaAxis2, 94}, {scrollPointDeltaAxis1, 96},
        {scrollPointDeltaAxis2, 97},      {scrollPhase, 99},
        {scrollMomentumPhase, 123}};
    for (const auto& [field, number] : fields) {
        double asDouble = 0;
        std::int64_t asInteger = 0;
        owner.answer = [&, field = field](EventType, Event* event) {
            asDouble = event->doubleValueField(field);
            asInteger = event->integerValueField(field);
            event->setDoubleValueField(field, -3);
            return event;
        };
        EXPECT_TRUE(fakeEvents().scroll({{static_cast<CGEventField>(number), 2.5}}));
        EXPECT_EQ(asDouble, 2.5) << number;
        EXPECT_EQ(asInteger, 2) << number;
        EXPECT_EQ(fakeEvents().arrived.back().field(static_cast<CGEventField>(number)), -3)
            << number;
    }
}

TEST_F(MacEventServicesTest, LocationIsAsTheSystemCountsIt) {
    install();
    Point place;
    owner.answer = [&](EventType, Event* event) {
        place = event->location();
        return event;
    };
    fakeEvents().pointer = {12.5, 700};
    fakeEvents().scroll(oneLine);
    EXPECT_EQ(place, (Point{12.5, 700}));
}

TEST_F(MacEventServicesTest, OwnerIsToldThatTheTapWasSwitchedOff) {
    install();
    const auto port = fakeEvents().taps().at(0);
    owner.answer = [this](EventType, Event*) {
        events.enableTap(*tap, true);
        return nullptr;
    };
    for (const auto type : {kCGEventTapDisabledByTimeout, kCGEventTapDisabledByUserInput}) {
        owner.wasGivenAnEvent = true;
        fakeEvents().disableTaps(type);
        EXPECT_EQ(owner.types.back(), static_cast<EventType>(type));
        EXPECT_FALSE(owner.wasGivenAnEvent);
        EXPECT_TRUE(fakeEvents().isEnabled(port));
    }
    EXPECT_EQ(owner.types,
              (std::vector{EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}));
}

TEST_F(MacEventServicesTest, NoticeWithAnEventPassesIt) {
    install();
    owner.answer = [](EventType, Event*) { return nullptr; };
    const auto& request = fakeEvents().tapRequests.at(0);
    const auto event = CGEventCreate(nullptr);
    EXPECT_EQ(request.callback(nullptr, kCGEventTapDisabledByTimeout, event, request.userInfo),
              event);
    EXPECT_FALSE(owner.wasGivenAnEvent);
    CFRelease(event);
}

TEST_F(MacEventServicesTest, InputPassesWhereThereIsNoAnswer) {
    // The owner fails.
    install();
    owner.answer = [](EventType, Event*) -> Event* { throw std::runtime_error("no answer"); };
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_EQ(owner.types.size(), 1U);

    // There is nothing to ask about.
    const auto& request = fakeEvents().tapRequests.at(0);
    EXPECT_EQ(request.callback(nullptr, kCGEventScrollWheel, nullptr, request.userInfo), nullptr);
    EXPECT_EQ(owner.types.size(), 1U);

    // There is nobody to ask.
    const auto event = CGEventCreate(nullptr);
    EXPECT_EQ(request.callback(nullptr, kCGEventScrollWheel, event, nullptr), event);
    CFRelease(event);
    const auto mute =
        events.createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                         eventMask(EventType::scrollWheel), nullptr, nullptr, "tool.test");
    const auto muteSource = events.createRunLoopSource(mute);
    runLoop.addSource(muteSource);
    events.enableTap(*mute, true);
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_EQ(owner.types.size(), 2U);
}

TEST_F(MacEventServicesTest, OwnerMayLetGoOfTheTapWhileItIsAsked) {
    install();
    owner.answer = [this](EventType, Event* event) {
        remove();
        return event;
    };
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_TRUE(fakeEvents().scroll(oneLine));
    EXPECT_EQ(owner.types.size(), 1U);
}

TEST_F(MacEventServicesTest, OwnerHearsOnTheMainThreadThatTheTapIsGone) {
    install();
    int heard = 0;
    events.setInvalidationHandler(*tap, [&] {
        ++heard;
        remove();
    });
    std::thread([] { fakeEvents().invalidateTaps(); }).join();
    EXPECT_EQ(heard, 0);
    runLoop.drain();
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(tap, nullptr);
}

TEST_F(MacEventServicesTest, OwnerThatLetsGoHearsNothing) {
    install();
    int heard = 0;
    events.setInvalidationHandler(*tap, [&] { ++heard; });
    remove();
    runLoop.drain();
    EXPECT_EQ(heard, 0);

    install();
    events.setInvalidationHandler(*tap, [&] { ++heard; });
    fakeEvents().invalidateTaps();
    remove(); // before the news has come
    runLoop.drain();
    EXPECT_EQ(heard, 0);
}

TEST_F(MacEventServicesTest, OnlyTheLastHandlerHears) {
    install();
    int first = 0;
    int last = 0;
    events.setInvalidationHandler(*tap, [&] { ++first; });
    events.setInvalidationHandler(*tap, [&] { ++last; });
    fakeEvents().invalidateTaps();
    runLoop.drain();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(last, 1);
}

TEST_F(MacEventServicesTest, EachTapIsTakenAwayByItself) {
    // The system may give a port the address of one that is gone.
    for (int round = 0; round < 3; ++round) {
        install();
        int heard = 0;
        events.setInvalidationHandler(*tap, [&] { ++heard; });
        fakeEvents().invalidateTaps();
        runLoop.drain();
        EXPECT_EQ(heard, 1) << round;
        remove();
    }
}

TEST_F(MacEventServicesTest, HandlerForATapThatIsAlreadyGoneHears) {
    install();
    fakeEvents().invalidateTaps();
    int heard = 0;
    events.setInvalidationHandler(*tap, [&] { ++heard; });
    runLoop.drain();
    EXPECT_EQ(heard, 1);
}

TEST_F(MacEventServicesTest, HintsChangeNothing) {
    install();
    fakeCoreFoundation().calls.clear();
    events.setArmedAt(*tap, [](Point, std::span<const Rect>) { return false; });
    events.setConstantRewrite(*tap, {true, true});
    events.setPanicHandler([] {});
    EXPECT_EQ(fakeCoreFoundation().calls, std::vector<std::string>{});
    fakeEvents().scroll(oneLine);
    EXPECT_EQ(owner.types.size(), 1U);
    EXPECT_EQ(fakeEvents().arrived.back().field(kCGScrollWheelEventDeltaAxis1), 1);
}

TEST_F(MacEventServicesTest, EmptyEventIsAtThePointersPlace) {
    fakeEvents().pointer = {30, 40};
    const auto event = events.createEvent();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->location(), (Point{30, 40}));
}

TEST_F(MacEventServicesTest, MiddleClickIsPostedAtTheHardwareLevel) {
    for (const auto type : {EventType::otherMouseDown, EventType::otherMouseUp}) {
        const auto event = events.createMouseEvent(type, {5, 6}, MouseButton::middle);
        ASSERT_TRUE(event);
        EXPECT_EQ(event->location(), (Point{5, 6}));
        EXPECT_TRUE(fakeEvents().posts.size() == (type == EventType::otherMouseUp ? 1U : 0U));
        events.post(TapLocation::hid, *event);
    }
    const auto& requests = fakeEvents().mouseEventRequests;
    ASSERT_EQ(requests.size(), 2U);
    for (const auto& request : requests) {
        EXPECT_FALSE(request.hasSource);
        EXPECT_EQ(static_cast<int>(request.button), 2);
    }
    EXPECT_EQ(static_cast<int>(requests[0].type), 25);
    EXPECT_EQ(static_cast<int>(requests[1].type), 26);
    const auto& posts = fakeEvents().posts;
    ASSERT_EQ(posts.size(), 2U);
    for (const auto& post : posts) {
        EXPECT_EQ(static_cast<int>(post.location), 0);
        EXPECT_EQ(post.event.location.x, 5);
        EXPECT_EQ(post.event.location.y, 6);
    }
    EXPECT_EQ(static_cast<int>(posts[0].event.type), 25);
    EXPECT_EQ(static_cast<int>(posts[1].event.type), 26);
}

TEST_F(MacEventServicesTest, WhatWePostSaysThatItIsOurs) {
    events.post(TapLocation::hid, *events.createEvent());
    events.post(TapLocation::hid,
                *events.createMouseEvent(EventType::rightMouseUp, {}, MouseButton::right));
    ASSERT_EQ(fakeEvents().posts.size(), 2U);
    for (const auto& post : fakeEvents().posts) {
        EXPECT_EQ(post.event.field(kCGEventSourceUserData), 42);
    }
}

TEST_F(MacEventServicesTest, WhatIsPostedInAnAnswerComesAfterTheEvent) {
    install();
    owner.answer = [this](EventType, Event* event) {
        events.post(TapLocation::hid,
                    *events.createMouseEvent(EventType::otherMouseDown, {}, MouseButton::middle));
        return event;
    };
    fakeEvents().scroll(oneLine);
    ASSERT_EQ(fakeEvents().arrived.size(), 2U);
    EXPECT_EQ(fakeEvents().arrived[0].type, kCGEventScrollWheel);
    EXPECT_EQ(fakeEvents().arrived[1].type, kCGEventOtherMouseDown);
}

TEST_F(MacEventServicesTest, NoEventWhenTheSystemMakesNone) {
    fakeEvents().makesEvents = false;
    EXPECT_EQ(events.createEvent(), nullptr);
    EXPECT_EQ(events.createMouseEvent(EventType::otherMouseDown, {}, MouseButton::middle), nullptr);
}

/// The window toolkit makes it, whose objects are not counted.
TEST(MacSystemDefinedEventTest, IsPostedAtTheHardwareLevelAndSaysThatItIsOurs) {
    fakeEvents().reset();
    VirtualRunLoop runLoop;
    MacEventServices events(runLoop);
    const auto event = events.createSystemDefinedEvent({.subtype = 8, .data1 = 0x100A00});
    ASSERT_TRUE(event);
    events.post(TapLocation::hid, *event);
    ASSERT_EQ(fakeEvents().posts.size(), 1U);
    const auto& post = fakeEvents().posts[0];
    EXPECT_EQ(static_cast<int>(post.location), 0);
    EXPECT_EQ(static_cast<int>(post.event.type), 14);
    EXPECT_EQ(post.event.field(kCGEventSourceUserData), 42);
}

} // namespace
} // namespace quillon
