#include "Tools/Edges/ScrollReverseManager.h"

#include "Tools/Edges/Tool4EdgesManager.h"
#include "support/ToolBench.h"

#include <gtest/gtest.h>

#include <array>

namespace quillon {
namespace {

using Strings = std::vector<std::string>;
using enum EventField;

constexpr std::array deltas{
    scrollLineDeltaAxis1,       scrollLineDeltaAxis2,  scrollFixedPointDeltaAxis1,
    scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1, scrollPointDeltaAxis2,
};

struct ScrollReverse : testing::Test, ToolBench {
    /// On, with these flags as they were stored.
    std::shared_ptr<ScrollReverseManager> startReversing(bool mouse, bool trackpad) {
        store("ScrollReverseMouse", mouse);
        store("ScrollReverseTrackpad", trackpad);
        auto manager = start<ScrollReverseManager>();
        manager->setIsEnabled(true);
        desktop.runLoop.drain();
        return manager;
    }
    [[nodiscard]] bool hasTap() const {
        return desktop.events.hasTap(ScrollReverseManager::toolId);
    }
    [[nodiscard]] ConstantRewrite hint() const {
        return desktop.events.constantRewrite(ScrollReverseManager::toolId);
    }
    static FieldEvent eventWith(EventField field, double value) {
        FieldEvent event;
        event.setDoubleValueField(scrollLineDeltaAxis1, 1);
        event.setDoubleValueField(field, value);
        return event;
    }
    Fate deliver(FieldEvent& event) {
        const Fate fate = desktop.events.deliver(EventType::scrollWheel, event);
        desktop.runLoop.drain();
        return fate;
    }
    /// Whether an event with this field is flipped.
    bool isFlipped(EventField field, double value) {
        FieldEvent event = eventWith(field, value);
        deliver(event);
        return event.doubleValueField(scrollLineDeltaAxis1) < 0;
    }
};

TEST_F(ScrollReverse, ItsTapAsksForScrollsAlone) {
    const auto manager = startReversing(true, true);
    EXPECT_EQ(desktop.events.eventsOfInterest(ScrollReverseManager::toolId), 1U << 22);
}

TEST_F(ScrollReverse, NegatesAllSixDeltasAndNothingElse) {
    const auto manager = startReversing(false, true);
    FieldEvent event;
    double value = 1.5;
    for (const EventField field : deltas) {
        event.setDoubleValueField(field, value++);
    }
    event.setDoubleValueField(scrollIsContinuous, 1);
    event.setDoubleValueField(scrollPhase, 2);
    event.setDoubleValueField(scrollMomentumPhase, 3);
    EXPECT_EQ(deliver(event), Fate::rewrite);
    value = 1.5;
    for (const EventField field : deltas) {
        EXPECT_EQ(event.doubleValueField(field), -value++);
    }
    EXPECT_EQ(event.doubleValueField(scrollIsContinuous), 1);
    EXPECT_EQ(event.doubleValueField(scrollPhase), 2);
    EXPECT_EQ(event.doubleValueField(scrollMomentumPhase), 3);

    const FieldEvent flipped = event;
    deliver(event);
    EXPECT_FALSE(event == flipped);
    deliver(event);
    EXPECT_TRUE(event == flipped) << "twice is as it was";
}

TEST_F(ScrollReverse, ReadsEveryDeltaBeforeItWritesOne) {
    // As on systems where the lines follow from the points.
    class Derived final : public Event {
      public:
        [[nodiscard]] std::int64_t integerValueField(EventField field) const override {
            return static_cast<std::int64_t>(doubleValueField(field));
        }
        [[nodiscard]] double doubleValueField(EventField field) const override {
            return field == scrollLineDeltaAxis1    ? lines
                   : field == scrollPointDeltaAxis1 ? points
                                                    : 0;
        }
        void setDoubleValueField(EventField field, double value) override {
            if (field == scrollLineDeltaAxis1) {
                lines = value;
                points = 10 * value;
            } else if (field == scrollPointDeltaAxis1) {
                points = value;
            }
        }
        [[nodiscard]] Point location() const override { return {}; }
        double lines = 1;
        double points = 7;
    };
    const auto manager = startReversing(false, true);
    Derived event;
    ScrollReverseManager::tapCallback(EventType::scrollWheel, &event, manager.get());
    EXPECT_EQ(event.lines, -1);
    EXPECT_EQ(event.points, -7);
}

TEST_F(ScrollReverse, AWheelOfPlainLinesIsAMouse) {
    const auto manager = startReversing(true, false);
    EXPECT_TRUE(isFlipped(scrollLineDeltaAxis2, 3));
    EXPECT_TRUE(isFlipped(scrollPhase, 1));
    EXPECT_FALSE(isFlipped(scrollIsContinuous, 1));
    for (const EventField field : {scrollFixedPointDeltaAxis1, scrollFixedPointDeltaAxis2,
                                   scrollPointDeltaAxis1, scrollPointDeltaAxis2}) {
        EXPECT_FALSE(isFlipped(field, 0.0001)) << static_cast<int>(field);
    }
}

TEST_F(ScrollReverse, AllElseIsATrackpad) {
    const auto manager = startReversing(false, true);
    EXPECT_FALSE(isFlipped(scrollLineDeltaAxis2, 3));
    EXPECT_TRUE(isFlipped(scrollIsContinuous, 1));
    for (const EventField field : {scrollFixedPointDeltaAxis1, scrollFixedPointDeltaAxis2,
                                   scrollPointDeltaAxis1, scrollPointDeltaAxis2}) {
        EXPECT_TRUE(isFlipped(field, 0.0001)) << static_cast<int>(field);
    }
}

TEST_F(ScrollReverse, WithBothFlagsOffEventsPassUnchanged) {
    const auto manager = startReversing(false, false);
    EXPECT_TRUE(hasTap());
    EXPECT_EQ(wheel(1), Fate::pass);
    EXPECT_FALSE(isFlipped(scrollIsContinuous, 1));
    EXPECT_EQ(hint(), ConstantRewrite{});
}

TEST_F(ScrollReverse, FlagsTakeEffectWithTheNextEventAndArePersisted) {
    const auto manager = startReversing(false, false);
    manager->setReverseMouse(true);
    EXPECT_EQ(wheel(1), Fate::rewrite);
    EXPECT_EQ(hint(), (ConstantRewrite{.reversesLines = true}));
    manager->setReverseMouse(false);
    manager->setReverseTrackpad(true);
    EXPECT_EQ(wheel(1), Fate::pass);
    EXPECT_EQ(hint(), (ConstantRewrite{.reversesContinuous = true}));
    const auto& defaults = desktop.userDefaults.standard();
    EXPECT_EQ(defaults.object("ScrollReverseMouse"), DefaultsObject(false));
    EXPECT_EQ(defaults.object("ScrollReverseTrackpad"), DefaultsObject(true));
    EXPECT_EQ(take("tap"), Strings{"install tool.scrollReverse"}) << "the tap stays";
}

TEST_F(ScrollReverse, DoesNotStartItselfAndPersistsNothingOfThat) {
    store("ScrollReverseMouse", true);
    const auto manager = start<ScrollReverseManager>();
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_TRUE(manager->hasAccessibilityPermission());
    EXPECT_FALSE(hasTap());
    manager->startMonitoring();
    EXPECT_FALSE(hasTap()) << "it is off";
    manager->setIsEnabled(true);
    EXPECT_TRUE(hasTap());
    EXPECT_EQ(hint(), (ConstantRewrite{.reversesLines = true}));
    manager->setIsEnabled(false);
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(wheel(1), Fate::pass);
}

TEST_F(ScrollReverse, EveryStartAsksForPermissionAlsoWhenOff) {
    const auto manager = start<ScrollReverseManager>();
    const int queries = desktop.accessibility.queries;
    manager->startMonitoring();
    EXPECT_EQ(desktop.accessibility.queries, queries + 1);
}

TEST_F(ScrollReverse, PermissionComesAndGoesForGood) {
    const auto manager = startReversing(true, true);
    for (int i = 0; i < 3; ++i) {
        desktop.accessibility.trusted = false;
        advance(2);
        EXPECT_FALSE(hasTap());
        EXPECT_FALSE(manager->hasAccessibilityPermission());
        desktop.accessibility.trusted = true;
        advance(2);
        EXPECT_TRUE(hasTap());
    }
    manager->setIsEnabled(false);
    desktop.accessibility.trusted = false;
    advance(2);
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_FALSE(hasTap());
    EXPECT_TRUE(manager->hasAccessibilityPermission());
}

TEST_F(ScrollReverse, WithoutPermissionNoTapIsAskedFor) {
    desktop.accessibility.trusted = false;
    const auto manager = startReversing(true, true);
    EXPECT_FALSE(hasTap());
    EXPECT_TRUE(manager->isEnabled());
}

TEST_F(ScrollReverse, ARefusedTapAsksAgainAndWaits) {
    desktop.events.setGranting(false);
    const auto manager = start<ScrollReverseManager>();
    int changes = 0;
    QObject::connect(manager.get(), &ScrollReverseManager::hasAccessibilityPermissionChanged,
                     [&] { ++changes; });
    desktop.accessibility.trusted = false; // withdrawn, and not yet noticed
    manager->setIsEnabled(true);
    EXPECT_FALSE(manager->hasAccessibilityPermission()) << "at once";
    EXPECT_EQ(changes, 1);
    desktop.events.setGranting(true);
    advance(10);
    EXPECT_FALSE(hasTap());
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_TRUE(hasTap());
}

TEST_F(ScrollReverse, WithoutAHealthTimerALostTapComesBackWhenSwitchedOnAgain) {
    const auto manager = startReversing(true, false);
    desktop.events.drop(ScrollReverseManager::toolId);
    advance(60);
    EXPECT_FALSE(manager->hasEventTap());
    manager->setIsEnabled(true);
    EXPECT_TRUE(manager->hasEventTap());
    EXPECT_EQ(hint(), (ConstantRewrite{.reversesLines = true}));
}

TEST_F(ScrollReverse, ATapThatWasSwitchedOffIsSwitchedOnAgain) {
    const auto manager = startReversing(true, false);
    for (const EventType reason :
         {EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}) {
        desktop.events.disableAll(reason);
        EXPECT_EQ(wheel(1), Fate::rewrite);
    }
}

TEST_F(ScrollReverse, LeavesAloneWhatIsNoneOfItsBusiness) {
    const auto manager = startReversing(true, true);
    FieldEvent event = eventWith(scrollLineDeltaAxis2, 1);
    const FieldEvent before = event;
    EXPECT_EQ(ScrollReverseManager::tapCallback(EventType::scrollWheel, &event, nullptr), &event);
    EXPECT_EQ(ScrollReverseManager::tapCallback(EventType::leftMouseDown, &event, manager.get()),
              &event);
    EXPECT_TRUE(event == before);
}

TEST_F(ScrollReverse, WhoIsAskedFirstSeesTheRawDirection) {
    store("Tool4LeftEdge", true);
    store("Tool4ScrollSensitivity", 1.0);
    pointerAtLeftEdge();
    {
        const auto manager = startReversing(true, false);
        const auto newer = startTool();
        wheel(1);
        EXPECT_EQ(count(previousScript), 1);
    }
    actions.clear();
    const auto older = startTool();
    const auto manager = startReversing(true, false);
    wheel(1);
    EXPECT_EQ(count(nextScript), 1);
}

TEST_F(ScrollReverse, PollEndsWithTheManager) {
    auto manager = startReversing(true, false);
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U);
    manager.reset();
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    EXPECT_FALSE(hasTap());
}

} // namespace
} // namespace quillon
