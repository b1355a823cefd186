#include "Platform/Simulated/SimulatedDesktop.h"

#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using Fate = SimulatedEventServices::Fate;

/// A tap that writes its name down and does as it is told.
struct Probe {
    std::string name;
    std::vector<std::string>* order;
    bool consumes = false;
    double adds = 0;
    std::vector<EventType> told;

    static Event* callback(EventType type, Event* event, void* userInfo) {
        auto& probe = *static_cast<Probe*>(userInfo);
        probe.told.push_back(type);
        if (event == nullptr) {
            return nullptr;
        }
        probe.order->push_back(probe.name);
        const auto field = EventField::scrollLineDeltaAxis1;
        event->setDoubleValueField(field, event->doubleValueField(field) + probe.adds);
        return probe.consumes ? nullptr : event;
    }
};

struct SimulatedEventServicesTest : testing::Test {
    std::vector<std::string> actions;
    SimulatedDisplays displays;
    SimulatedEventServices events{displays,
                                  [this](std::string_view kind, const std::string& detail) {
                                      actions.push_back(std::string(kind) + " " + detail);
                                  }};
    VirtualRunLoop loop;
    std::vector<std::string> order;

    EventTapRef tap(Probe& probe) {
        auto made = events.createTap(TapLocation::hid, TapPlacement::headInsert,
                                     TapOptions::filtering, eventMask(EventType::scrollWheel),
                                     Probe::callback, &probe, probe.name);
        if (made) {
            source = events.createRunLoopSource(made);
            loop.addSource(source);
            events.enableTap(*made, true);
        }
        return made;
    }

    Fate scroll() {
        FieldEvent event;
        event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);
        return events.deliver(EventType::scrollWheel, event);
    }

    RunLoopSourceRef source;
};

TEST_F(SimulatedEventServicesTest, NewestTapRunsFirstAndMayConsume) {
    Probe old{"old", &order};
    Probe recent{"recent", &order};
    const auto a = tap(old);
    const auto b = tap(recent);
    EXPECT_EQ(scroll(), Fate::pass);
    EXPECT_EQ(order, (std::vector<std::string>{"recent", "old"}));
    recent.consumes = true;
    order.clear();
    EXPECT_EQ(scroll(), Fate::consume);
    EXPECT_EQ(order, (std::vector<std::string>{"recent"}));
}

TEST_F(SimulatedEventServicesTest, RewritingIsSeenByLaterTapsAndTheOutcome) {
    Probe old{"old", &order, false, -2};
    Probe recent{"recent", &order, false, 2};
    const auto a = tap(old);
    EXPECT_EQ(scroll(), Fate::rewrite);
    const auto b = tap(recent);
    EXPECT_EQ(scroll(), Fate::pass) << "two rewrites that cancel out change nothing";
}

TEST_F(SimulatedEventServicesTest, TapWithoutSourceOrDisabledGetsNothing) {
    Probe probe{"probe", &order};
    const auto made = tap(probe);
    events.enableTap(*made, false);
    scroll();
    events.enableTap(*made, true);
    loop.removeSource(source);
    scroll();
    EXPECT_TRUE(order.empty());
    loop.addSource(source);
    scroll();
    EXPECT_EQ(order.size(), 1U);
}

TEST_F(SimulatedEventServicesTest, OnlyTypesOfInterest) {
    Probe probe{"probe", &order};
    const auto made = tap(probe);
    FieldEvent event;
    events.deliver(EventType::leftMouseDown, event);
    EXPECT_TRUE(order.empty());
}

TEST_F(SimulatedEventServicesTest, DisablingAllTellsEach) {
    Probe probe{"probe", &order};
    const auto made = tap(probe);
    events.disableAll(EventType::tapDisabledByUserInput);
    EXPECT_EQ(probe.told, (std::vector{EventType::tapDisabledByUserInput}));
    EXPECT_FALSE(events.isListening("probe"));
}

TEST_F(SimulatedEventServicesTest, RefusesWhenTold) {
    Probe probe{"probe", &order};
    events.setGranting(false);
    EXPECT_EQ(tap(probe), nullptr);
    EXPECT_TRUE(actions.empty());
}

TEST_F(SimulatedEventServicesTest, ReportsInstallAndRemoveButNotADrop) {
    Probe probe{"probe", &order};
    auto made = tap(probe);
    made.reset();
    EXPECT_EQ(actions, (std::vector<std::string>{"tap install probe", "tap remove probe"}));
    made = tap(probe);
    actions.clear();
    bool told = false;
    events.setInvalidationHandler(*made, [&] { told = true; });
    events.drop("probe");
    EXPECT_TRUE(told);
    EXPECT_EQ(scroll(), Fate::pass);
    made.reset();
    EXPECT_TRUE(actions.empty());
    EXPECT_TRUE(order.empty());
}

} // namespace
} // namespace quillon
