#include "Platform/FieldEvent.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace quillon {
namespace {

TEST(FieldEvent, KeepsEachFieldApart) {
    FieldEvent event;
    double value = 1;
    for (const EventField field : FieldEvent::fields) {
        event.setDoubleValueField(field, value++);
    }
    value = 1;
    for (const EventField field : FieldEvent::fields) {
        EXPECT_EQ(event.doubleValueField(field), value++) << static_cast<int>(field);
    }
}

TEST(FieldEvent, FieldsHaveTheNumbersOfTheNativeServices) {
    const std::array numbers{11, 12, 88, 93, 94, 96, 97, 99, 123};
    ASSERT_EQ(FieldEvent::fields.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_EQ(static_cast<int>(FieldEvent::fields[i]), numbers[i]);
    }
    EXPECT_EQ(eventMask(EventType::scrollWheel), 4194304U);
    EXPECT_EQ(static_cast<std::int32_t>(EventType::tapDisabledByTimeout), -2);
    EXPECT_EQ(static_cast<std::int32_t>(EventType::tapDisabledByUserInput), -1);
}

TEST(FieldEvent, IntegersAreCutOffTowardZero) {
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, -1.9);
    EXPECT_EQ(event.integerValueField(EventField::scrollLineDeltaAxis1), -1);
}

TEST(FieldEvent, WhatNoIntegerHoldsReadsAsZero) {
    FieldEvent event;
    for (const double value : {1e30, -1e30, std::nan("")}) {
        event.setDoubleValueField(EventField::scrollPhase, value);
        EXPECT_EQ(event.integerValueField(EventField::scrollPhase), 0);
    }
}

TEST(FieldEvent, UnknownFieldReadsAsZero) {
    FieldEvent event;
    event.setDoubleValueField(static_cast<EventField>(95), 3);
    EXPECT_EQ(event.doubleValueField(static_cast<EventField>(95)), 0);
}

} // namespace
} // namespace quillon
