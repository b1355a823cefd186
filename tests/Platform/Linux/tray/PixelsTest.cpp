#include "Platform/Linux/tray/Pixels.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(NetworkOrder, AlphaRedGreenBlueNotMultiplied) {
    QImage picture(2, 1, QImage::Format_ARGB32_Premultiplied);
    picture.setPixelColor(0, 0, QColor(0x11, 0x22, 0x33));
    picture.setPixelColor(1, 0, QColor(255, 255, 255, 0x80));
    EXPECT_EQ(networkOrderPixels(picture).toHex(), QByteArray("ff11223380ffffff"));
}

TEST(MedianLuminance, AFewDrawnPixelsDoNotCount) {
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::black);
    for (int x = 0; x < 10; ++x) {
        picture.setPixelColor(x, 3, Qt::white);
    }
    EXPECT_EQ(medianLuminance(picture, QRect()), 0.0);
    picture.invertPixels();
    EXPECT_NEAR(medianLuminance(picture, QRect()).value(), 1.0, 1e-9);
}

TEST(MedianLuminance, LeavesOutTheItem) {
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::white);
    for (int y = 0; y < 10; ++y) {
        picture.setPixelColor(0, y, Qt::black);
    }
    EXPECT_EQ(medianLuminance(picture, QRect(1, 0, 9, 10)), 0.0);
    EXPECT_EQ(medianLuminance(picture, picture.rect()), std::nullopt);
}

TEST(MedianLuminance, GreenIsBrighterThanBlue) {
    QImage picture(1, 1, QImage::Format_RGB32);
    picture.fill(Qt::green);
    EXPECT_NEAR(*medianLuminance(picture, QRect()), 0.7152, 1e-9);
    picture.fill(Qt::blue);
    EXPECT_NEAR(*medianLuminance(picture, QRect()), 0.0722, 1e-9);
}

TEST(LabelColor, WhiteOnDarkBlackOnLight) {
    EXPECT_EQ(labelColor(0.2), QColor(Qt::white));
    EXPECT_EQ(labelColor(0.8), QColor(Qt::black));
}

/// Shaded from top to bottom, with an icon in it.
QImage shadedStrip() {
    QImage strip(30, 3, QImage::Format_RGB32);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 30; ++x) {
            strip.setPixelColor(x, y, x < 6 ? QColor(Qt::red) : QColor(10 * y, 0, 40));
        }
    }
    return strip;
}

TEST(Ground, ShadedAcrossAHorizontalPanel) {
    const QImage ground = groundOf(shadedStrip(), QRect(10, 0, 5, 3), false, 5);
    ASSERT_EQ(ground.size(), QSize(5, 3));
    for (int y = 0; y < 3; ++y) {
        EXPECT_EQ(ground.pixelColor(4, y), QColor(10 * y, 0, 40));
    }
}

TEST(Ground, ShadedAcrossAVerticalPanel) {
    const QImage ground =
        groundOf(shadedStrip().transformed(QTransform().rotate(90)), QRect(0, 10, 3, 5), true, 5);
    ASSERT_EQ(ground.size(), QSize(3, 5));
    for (int x = 0; x < 3; ++x) {
        EXPECT_EQ(ground.pixelColor(x, 4), QColor(10 * (2 - x), 0, 40));
    }
}

} // namespace
} // namespace quillon
