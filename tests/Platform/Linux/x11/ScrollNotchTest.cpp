#include "Platform/Linux/x11/ScrollNotch.h"

#include <gtest/gtest.h>

#include <map>

namespace quillon {
namespace {

using Axis = ScrollNotch::Axis;
using Fields = std::map<EventField, double>;

/// The fields of the event that are not 0.
Fields fieldsOf(const ScrollNotch& notch) {
    using enum EventField;
    const FieldEvent event = eventOfNotch(notch, {5, 6});
    EXPECT_EQ(event.type(), EventType::scrollWheel);
    EXPECT_EQ(event.location(), (Point{5, 6}));
    Fields fields;
    for (const EventField field :
         {scrollLineDeltaAxis1, scrollLineDeltaAxis2, scrollIsContinuous,
          scrollFixedPointDeltaAxis1, scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1,
          scrollPointDeltaAxis2, scrollPhase, scrollMomentumPhase}) {
        if (event.doubleValueField(field) != 0) {
            fields[field] = event.doubleValueField(field);
        }
    }
    return fields;
}

TEST(ScrollNotch, ButtonsAndNotchesAreTheSameThing) {
    struct Row {
        std::uint8_t button;
        Axis axis;
        int direction;
    };
    for (const Row& row : {Row{4, Axis::vertical, 1}, Row{5, Axis::vertical, -1},
                           Row{6, Axis::horizontal, -1}, Row{7, Axis::horizontal, 1}}) {
        const ScrollNotch notch = notchOfButton(row.button, {3, 4});
        EXPECT_EQ(notch.axis, row.axis);
        EXPECT_EQ(notch.direction, row.direction);
        EXPECT_FALSE(notch.continuous);
        EXPECT_EQ(notch.location, (Point{3, 4}));
        EXPECT_EQ(buttonOfNotch(notch), row.button);
    }
}

TEST(ScrollNotch, WheelIsOneLine) {
    using enum EventField;
    EXPECT_EQ(fieldsOf({Axis::vertical, 1}), (Fields{{scrollLineDeltaAxis1, 1}}));
    EXPECT_EQ(fieldsOf({Axis::horizontal, -1}), (Fields{{scrollLineDeltaAxis2, -1}}));
}

TEST(ScrollNotch, TouchpadIsContinuous) {
    using enum EventField;
    EXPECT_EQ(fieldsOf({Axis::vertical, -1, true}),
              (Fields{{scrollIsContinuous, 1}, {scrollPointDeltaAxis1, -10}}));
    EXPECT_EQ(fieldsOf({Axis::horizontal, 1, true}),
              (Fields{{scrollIsContinuous, 1}, {scrollPointDeltaAxis2, 10}}));
}

} // namespace
} // namespace quillon
