#include "Platform/Linux/tray/ViewPainter.h"

#include "Platform/Button.h"
#include "Platform/Linux/tray/LinuxImages.h"
#include "Platform/Linux/tray/TrayBench.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillon {
namespace {

struct ViewPainterTest : testing::Test {
    TrayEnvironment environment;
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};

    static QImage paint(const View& view, QSize pixels, double scale,
                        const QColor& label = Qt::white) {
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paintView(painter, view, {pixels.width() / scale, pixels.height() / scale}, scale, label);
        return image;
    }

    static int highestAlpha(const QImage& image) {
        int highest = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                highest = std::max(highest, qAlpha(image.pixel(x, y)));
            }
        }
        return highest;
    }

    /// What is drawn on, less what is (nearly) transparent.
    static QRect extent(const QImage& image) {
        QRect all;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) > 16) {
                    all |= QRect(x, y, 1, 1);
                }
            }
        }
        return all;
    }
};

ButtonLook logoOf(Size size) {
    ButtonLook look;
    look.image = LinuxImages().named("MenuBarLogo");
    look.image->isTemplate = true;
    look.image->size = size;
    look.imagePosition = ImagePosition::imageOnly;
    return look;
}

TEST_F(ViewPainterTest, FontsOfTheDesktop) {
    const QFont plain = desktopFont({.size = 11}, 1);
    EXPECT_EQ(plain.pixelSize(), 11);
    EXPECT_EQ(plain.weight(), QFont::Normal);
    EXPECT_EQ(desktopFont({.size = 11}, 2).pixelSize(), 22);
    EXPECT_EQ(desktopFont({.weight = FontWeight::medium}, 1).weight(), QFont::Medium);
    EXPECT_EQ(desktopFont({.weight = FontWeight::semibold}, 1).weight(), QFont::DemiBold);
    const QFontMetricsF digits(desktopFont({.size = 40, .monospaced = true}, 1));
    EXPECT_EQ(digits.horizontalAdvance(u'1'), digits.horizontalAdvance(u'W'));
}

TEST_F(ViewPainterTest, AssetsAndSymbolsByName) {
    const LinuxImages images;
    EXPECT_TRUE(images.named("MenuBarLogo"));
    EXPECT_FALSE(images.named("Nothing"));
    EXPECT_FALSE(images.named("wrench.and.screwdriver"));
    EXPECT_FALSE(images.systemSymbol("MenuBarLogo", "Logo"));
    const auto tools = images.systemSymbol("wrench.and.screwdriver", "Tools");
    ASSERT_TRUE(tools);
    EXPECT_EQ(tools->accessibilityDescription, "Tools");
    EXPECT_TRUE(tools->isSymbol);
}

TEST_F(ViewPainterTest, TemplatesHaveTheColourOfLabels) {
    Button button;
    button.setLook(logoOf({20, 20}));
    for (const QColor& label : {QColor(Qt::white), QColor(Qt::black), QColor(Qt::red)}) {
        const QImage image = paint(button, {22, 22}, 1, label);
        EXPECT_EQ(highestAlpha(image), 255);
        for (int y = 0; y < 22; ++y) {
            for (int x = 0; x < 22; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() == 255) {
                    EXPECT_EQ(pixel, label);
                }
            }
        }
    }
}

TEST_F(ViewPainterTest, PicturesAreAsLargeAsTheyAskButNeverLargerThanTheItem) {
    Button button;
    button.setLook(logoOf({20, 20}));
    const QSize at22 = extent(paint(button, {22, 22}, 1)).size();
    const QRect at48 = extent(paint(button, {48, 48}, 1));
    EXPECT_EQ(at48.size(), at22);
    EXPECT_LE(std::abs(at48.center().x() - 24), 2);
    EXPECT_NEAR(extent(paint(button, {48, 48}, 2)).width(), 2 * at22.width(), 2);
    EXPECT_TRUE(QRect(0, 0, 12, 12).contains(extent(paint(button, {12, 12}, 1))));
    EXPECT_GE(extent(paint(button, {12, 12}, 1)).width(), 9);
}

TEST_F(ViewPainterTest, TitlesWhereThereIsNoPicture) {
    Button button;
    ButtonLook look;
    look.title = "I";
    look.titleFont.size = 14;
    look.alignment = TextAlignment::center;
    button.setLook(look);
    const QRect centred = extent(paint(button, {60, 22}, 1));
    EXPECT_LE(std::abs(centred.center().x() - 30), 2);
    EXPECT_LE(std::abs(centred.center().y() - 11), 3);
    look.alignment = TextAlignment::left;
    button.setLook(look);
    EXPECT_LT(extent(paint(button, {60, 22}, 1)).right(), 12);
}

TEST_F(ViewPainterTest, OpacitiesMultiply) {
    auto button = std::make_shared<Button>();
    button->setLook(logoOf({20, 20}));
    button->setFrame({0, 0, 22, 22});
    button->setAlphaValue(0.5);
    View box;
    box.addSubview(button);
    EXPECT_NEAR(highestAlpha(paint(box, {22, 22}, 1)), 128, 1);
    box.setAlphaValue(0.5);
    EXPECT_NEAR(highestAlpha(paint(box, {22, 22}, 1)), 64, 1);
    box.setAlphaValue(0);
    EXPECT_EQ(highestAlpha(paint(box, {22, 22}, 1)), 0);
}

struct Label final : View {
    Rect place;
    double opacity = 1;
    void draw(DrawingContext& context) const override {
        context.drawLabel("888", place, {.size = 10}, opacity);
    }
};

TEST_F(ViewPainterTest, ViewsDrawWhereTheyAre) {
    auto label = std::make_shared<Label>();
    label->place = {2, 3, 30, 14};
    label->setFrame({40, 10, 40, 20});
    View box;
    box.addSubview(label);
    const QRect once = extent(paint(box, {100, 40}, 1));
    EXPECT_GE(once.left(), 42);
    EXPECT_LE(once.left(), 45);
    EXPECT_GE(once.top(), 13);
    EXPECT_LT(once.bottom(), 30);
    const QRect twice = extent(paint(box, {200, 80}, 2));
    EXPECT_NEAR(twice.left(), 2 * once.left(), 3);
    EXPECT_NEAR(twice.width(), 2 * once.width(), 4);

    label->opacity = 0.25;
    const int faint = highestAlpha(paint(box, {100, 40}, 1));
    EXPECT_LE(faint, 64);
    EXPECT_GT(faint, 30);
}

} // namespace
} // namespace quillon
