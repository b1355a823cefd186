#include "Conformance.h"

namespace quillon {
namespace {

class DisplaysConformance : public Conformance {
  protected:
    [[nodiscard]] std::vector<Rect> screens() const {
        const auto all = platform().displays.screens();
        return {all.begin(), all.end()};
    }
    [[nodiscard]] bool finds(Point pointer) const {
        return until([&] { return platform().displays.mouseLocation() == pointer; });
    }
};

TEST_F(DisplaysConformance, TheMainScreenIsAtTheOrigin) {
    ASSERT_EQ(screens(), std::vector{world->mainScreen()});
    EXPECT_EQ(screens()[0].x, 0);
    EXPECT_EQ(screens()[0].y, 0);
}

TEST_F(DisplaysConformance, ThePointerIsCountedFromTheBottomLeft) {
    ASSERT_FALSE(screens().empty());
    world->movePointer({100, 200});
    EXPECT_TRUE(finds({100, 200}));
    const Point topLeft{0, world->mainScreen().height};
    world->movePointer(topLeft);
    EXPECT_TRUE(finds(topLeft));
    EXPECT_TRUE(screens()[0].contains(topLeft));
    const Point bottomRight{world->mainScreen().width - 1, 1};
    world->movePointer(bottomRight);
    EXPECT_TRUE(finds(bottomRight));
    EXPECT_TRUE(screens()[0].contains(bottomRight));
}

TEST_F(DisplaysConformance, ScreensThatComeAreSeenWithTheMainOneFirst) {
    const Rect whole = world->mainScreen();
    world->splitScreen();
    ASSERT_TRUE(until([&] { return screens().size() == 2; }));
    EXPECT_EQ(screens()[0], (Rect{0, 0, whole.width / 2, whole.height}));
    EXPECT_EQ(screens()[1], (Rect{-whole.width / 2, 0, whole.width / 2, whole.height}));
    world->movePointer({-10, 100});
    EXPECT_TRUE(finds({-10, 100}));
    EXPECT_EQ(screenContaining({-10, 100}, screens())->x, -whole.width / 2);
}

} // namespace
} // namespace quillon
