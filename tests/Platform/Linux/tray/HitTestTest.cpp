#include "Platform/Linux/tray/HitTest.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct HitTest : testing::Test {
    std::shared_ptr<View> root = std::make_shared<View>();
    std::shared_ptr<View> box = std::make_shared<View>();
    std::shared_ptr<Button> inner = std::make_shared<Button>();
    std::shared_ptr<Button> front = std::make_shared<Button>();

    HitTest() {
        root->setFrame({0, 0, 100, 20});
        box->setFrame({10, 5, 50, 10});
        inner->setFrame({5, 0, 10, 10});
        front->setFrame({20, 0, 10, 20});
        box->addSubview(inner);
        root->addSubview(box);
        root->addSubview(front);
    }
};

TEST_F(HitTest, CoordinatesAreThoseOfTheViewItLiesIn) {
    EXPECT_EQ(buttonAt(root, Point{15, 5}), inner);
    EXPECT_EQ(buttonAt(root, Point{14.9, 5}), nullptr);
    EXPECT_EQ(buttonAt(root, Point{15, 4.9}), nullptr);
    EXPECT_EQ(buttonAt(root, Point{15, 15}), nullptr);
}

TEST_F(HitTest, TheOneInFrontOfOthers) {
    EXPECT_EQ(buttonAt(root, Point{19.9, 6}), inner);
    EXPECT_EQ(buttonAt(root, Point{20, 6}), front) << "where both are";
}

TEST_F(HitTest, WithoutAPlaceTheFrontMostOfAll) {
    EXPECT_EQ(buttonAt(root, std::nullopt), front);
    EXPECT_EQ(buttonAt(box, std::nullopt), inner);
}

TEST_F(HitTest, AButtonThatIsTheRootFillsTheItem) {
    EXPECT_EQ(buttonAt(front, Point{900, 900}), front);
}

TEST_F(HitTest, TheToolTipOfWhatIsInFront) {
    EXPECT_EQ(toolTipOf(*root), "");
    root->setToolTip("root");
    EXPECT_EQ(toolTipOf(*root), "root");
    inner->setToolTip("inner");
    EXPECT_EQ(toolTipOf(*root), "inner");
    front->setToolTip("front");
    EXPECT_EQ(toolTipOf(*root), "front");
}

} // namespace
} // namespace quillon
