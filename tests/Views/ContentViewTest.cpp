#include "support/ScreenFixture.h"

#include <QFontInfo>
#include <QPalette>

namespace quillon {
namespace {

struct ContentViewTest : ScreenFixture {
    /// The item that shows this text; null when there is none.
    [[nodiscard]] QQuickItem* textItem(const QString& text) const {
        const auto found = items(root(), [&](const QQuickItem& item) {
            return item.property("text").toString() == text;
        });
        return found.empty() ? nullptr : found.front();
    }
};

TEST_F(ContentViewTest, OnlyScreensThatExistHaveAPlace) {
    EXPECT_TRUE(screenUrl("ContentView").isValid());
    EXPECT_FALSE(screenUrl("NoSuchView").isValid());
    EXPECT_FALSE(screenUrl("").isValid());
}

TEST_F(ContentViewTest, TitleInTheTitleFontReadableByAssistiveTechnology) {
    QQuickItem* title = textItem("Quillon");
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(QFontInfo(title->property("font").value<QFont>()).family(), "Koulen");
    auto* accessible = QAccessible::queryAccessibleInterface(title);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Quillon");
}

TEST_F(ContentViewTest, HasNothingToGoBackFromAndNoSheet) {
    bool wentBack = true;
    ASSERT_TRUE(QMetaObject::invokeMethod(&root(), "goBack", Q_RETURN_ARG(bool, wentBack)));
    EXPECT_FALSE(wentBack);
    EXPECT_FALSE(root().property("sheetAttached").toBool());
    EXPECT_EQ(root().property("cornerRadius").toDouble(), 12);
}

TEST_F(ContentViewTest, LightOrDarkAsTheDesktopIs) {
    for (const bool dark : {false, true, false}) {
        QGuiApplication::setPalette(QPalette(dark ? QColor(40, 40, 44) : QColor(239, 239, 239)));
        QCoreApplication::processEvents();
        const QColor surface = view.grabWindow().pixelColor(5, 120); // beside the cards
        const QColor text = textItem("Quillon")->property("color").value<QColor>();
        EXPECT_EQ(surface.lightnessF() < 0.3, dark) << surface.name().toStdString();
        EXPECT_EQ(surface.lightnessF() > 0.9, !dark) << surface.name().toStdString();
        EXPECT_EQ(text.lightnessF() > 0.8, dark);
    }
}

TEST_F(ContentViewTest, CornersAreLeftOutOnlyWhereThatIsSeenThrough) {
    const QColor edge = view.grabWindow().pixelColor(180, 0);
    EXPECT_EQ(view.grabWindow().pixelColor(0, 0), QColor(Qt::black)) << "nothing was drawn";
    root().setProperty("composited", false);
    EXPECT_EQ(view.grabWindow().pixelColor(0, 0), edge);
}

} // namespace
} // namespace quillon
