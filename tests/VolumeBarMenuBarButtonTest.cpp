#include "VolumeBarMenuBarButton.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace quillon {
namespace {

using testing::DoubleNear;

/// Every character is 0.6 of the font's size wide, a line 1.2 of it high.
Size monospacedSize(std::string_view text, const Font& font) {
    return {0.6 * font.size * static_cast<double>(text.size()), 1.2 * font.size};
}

VolumeBarLayout layOut(double level, Size size = {24, 22}) {
    return VolumeBarMenuBarButton::layOut(level, size, monospacedSize);
}

std::string textOf(double level) {
    const VolumeBarLayout layout = layOut(level);
    return layout.integer + "|" + layout.fraction;
}

TEST(VolumeBarMenuBarButton, StartsPlain) {
    const VolumeBarMenuBarButton button;
    EXPECT_EQ(button.level(), 0);
    EXPECT_FALSE(button.look().isBordered);
    EXPECT_EQ(button.look().bezelStyle, BezelStyle::shadowlessSquare);
    EXPECT_FALSE(button.look().showsFocusRing);
    EXPECT_TRUE(button.look().title.empty());
    EXPECT_FALSE(button.look().image);
}

TEST(VolumeBarMenuBarButton, ShowsPercentWithOneDecimalAndNeverAHundred) {
    EXPECT_EQ(textOf(0.425), "42|.5");
    EXPECT_EQ(textOf(0), "0|.0");
    EXPECT_EQ(textOf(0.07), "7|.0");
    EXPECT_EQ(textOf(0.999), "99|.9");
    EXPECT_EQ(textOf(0.9996), "99|.9");
    EXPECT_EQ(textOf(1), "99|.9");
    EXPECT_EQ(textOf(7), "99|.9");
    EXPECT_EQ(textOf(-0.5), "0|.0");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "0|.0");
}

TEST(VolumeBarMenuBarButton, FontIsAsHighAsThereIsRoomButNotBeyondEleven) {
    const VolumeBarLayout wide = layOut(0.425, {100, 22});
    EXPECT_EQ(wide.integerFont, (Font{11, FontWeight::semibold, true}));
    EXPECT_EQ(wide.fractionFont.weight, FontWeight::semibold);
    EXPECT_TRUE(wide.fractionFont.monospaced);
    EXPECT_THAT(wide.fractionFont.size, DoubleNear(5.72, 1e-9));
    EXPECT_EQ(layOut(0.425, {100, 13}).integerFont.size, 9);
    EXPECT_EQ(layOut(0.425, {100, 3}).integerFont.size, 0);
}

TEST(VolumeBarMenuBarButton, TheFractionsFontIsNeverBelowFive) {
    EXPECT_EQ(layOut(0.425, {100, 13}).fractionFont.size, 5); // 9 × 0.52 = 4.68
}

TEST(VolumeBarMenuBarButton, ShrinksInHalfPointsUntilItFits) {
    // 42 and .5 at size s: 1.2 s + 1.2 max(0.52 s, 5); 19 points of room from a width of 21.
    const VolumeBarLayout layout = layOut(0.425, {21, 22});
    EXPECT_EQ(layout.integerFont.size, 10);                     // 12 + 6.24 = 18.24
    EXPECT_EQ(layOut(0.425, {20.2, 22}).integerFont.size, 9.5); // 10 needs 18.24 of 18.2
    EXPECT_EQ(layOut(0.425, {20.25, 22}).integerFont.size, 10); // and just fits
}

TEST(VolumeBarMenuBarButton, NeverShrinksBelowSixAndAHalf) {
    const VolumeBarLayout layout = layOut(0.425, {1, 22});
    EXPECT_EQ(layout.integerFont.size, 6.5);
    EXPECT_EQ(layout.fractionFont.size, 5);
    // What starts below is not made larger.
    EXPECT_EQ(layOut(0.425, {1, 10}).integerFont.size, 6);
}

TEST(VolumeBarMenuBarButton, PartsAreCentredTogetherTheFractionRaised) {
    const VolumeBarLayout layout = layOut(0.425, {30, 22}); // 13.2 + 6.864 = 20.064 wide
    EXPECT_EQ(layout.integerRect, (Rect{4, 4, 14, 14}));    // 13.2 high
    EXPECT_EQ(layout.fractionRect, (Rect{18, 6, 7, 7}));    // 6.864 high: 7 − 1
}

TEST(VolumeBarMenuBarButton, TooWideATextStartsLeftOfTheButton) {
    EXPECT_EQ(layOut(0.425, {1, 22}).integerRect.x, std::floor((1 - 7.8 - 6) / 2));
}

class RecordingContext final : public DrawingContext {
  public:
    [[nodiscard]] Size measure(std::string_view text, const Font& font) const override {
        return monospacedSize(text, font);
    }
    void drawLabel(std::string_view text, const Rect& rect, const Font& font,
                   double opacity) override {
        drawn.push_back({std::string(text), rect, font, opacity});
    }
    struct Label {
        std::string text;
        Rect rect;
        Font font;
        double opacity;
    };
    std::vector<Label> drawn;
};

TEST(VolumeBarMenuBarButton, DrawsBothParts) {
    VolumeBarMenuBarButton button;
    button.setFrame({0, 0, 30, 22});
    button.setLevel(0.425);
    RecordingContext context;
    button.draw(context);
    const VolumeBarLayout layout = layOut(0.425, {30, 22});
    ASSERT_EQ(context.drawn.size(), 2U);
    EXPECT_EQ(context.drawn[0].text, "42");
    EXPECT_EQ(context.drawn[0].rect, layout.integerRect);
    EXPECT_EQ(context.drawn[0].font, layout.integerFont);
    EXPECT_EQ(context.drawn[1].text, ".5");
    EXPECT_EQ(context.drawn[1].rect, layout.fractionRect);
    EXPECT_EQ(context.drawn[1].font, layout.fractionFont);
    EXPECT_EQ(context.drawn[0].opacity, 0.95);
    EXPECT_EQ(context.drawn[1].opacity, 0.95);
}

class CountingHost final : public ViewHost {
  public:
    void viewChanged() override { ++changes; }
    void toolTipChanged() override {}
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return std::nullopt; }
    int changes = 0;
};

TEST(VolumeBarMenuBarButton, RedrawsOnlyForAChangeThatCanBeSeen) {
    CountingHost host;
    VolumeBarMenuBarButton button;
    button.setHost(&host);
    button.setLevel(0.002);
    EXPECT_EQ(host.changes, 0);
    EXPECT_EQ(button.level(), 0.002);
    button.setLevel(0.0041);
    EXPECT_EQ(host.changes, 1);
    button.setLevel(0.0025);
    EXPECT_EQ(host.changes, 1);
    button.setLevel(0);
    EXPECT_EQ(host.changes, 2);
}

} // namespace
} // namespace quillon
