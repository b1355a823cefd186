#include "Platform/Linux/keys/SpecialKey.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

SystemDefinedEvent event(std::int64_t code, std::int64_t state, std::int16_t subtype = 8) {
    return {.subtype = subtype, .data1 = code << 16 | state, .data2 = -1};
}

TEST(SpecialKeyTest, KeysGoDown) {
    EXPECT_EQ(pressedKey(event(0, 0xA00)), SpecialKey::volumeUp);
    EXPECT_EQ(pressedKey(event(1, 0xA00)), SpecialKey::volumeDown);
    EXPECT_EQ(pressedKey(event(16, 0xA00)), SpecialKey::playPause);
    EXPECT_EQ(pressedKey(event(17, 0xA00)), SpecialKey::next);
    EXPECT_EQ(pressedKey(event(18, 0xA00)), SpecialKey::previous);
}

TEST(SpecialKeyTest, OtherEventsAreNone) {
    EXPECT_EQ(pressedKey(event(16, 0xB00)), std::nullopt);
    EXPECT_EQ(pressedKey(event(2, 0xA00)), std::nullopt);
    EXPECT_EQ(pressedKey(event(-1, 0xA00)), std::nullopt);
    EXPECT_EQ(pressedKey(event(16, 0)), std::nullopt);
    EXPECT_EQ(pressedKey(event(16, 0xA00, 7)), std::nullopt);
}

} // namespace
} // namespace quillon
