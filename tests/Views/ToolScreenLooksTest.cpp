#include "support/ScreenLooks.h"
#include "support/ToolScreenFixture.h"

namespace quillon {
namespace {

struct ToolScreenLooks : ToolScreenFixture {
    SimulatedHub untrusted{false};
    ScreenLooks looks{view};
};

TEST_F(ToolScreenLooks, TextsCanBeReadOnLightAndDark) {
    for (const bool dark : {false, true}) {
        ScreenLooks::setPalette(dark);
        view.setColor(dark ? QColor(43, 43, 47) : QColor(251, 251, 251));
        for (const std::string_view tool : allTools) {
            open(tool);
            SCOPED_TRACE(tool);
            for (const bool contrasts : {false, true}) {
                setTheme("highContrast", contrasts);
                settle();
                looks.expectReadable(view.grabWindow(), contrasts ? 7 : 4.5);
            }
            setTheme("highContrast", false);
            looks.expectNoMarkup();
        }
    }
}

TEST_F(ToolScreenLooks, NothingOverflowsOrOverlaps) {
    for (const bool isLong : {false, true}) {
        const auto language = isLong ? std::make_unique<LongLanguage>() : nullptr;
        untrusted.managers.windowSwitcher().setExcludedAppNames(
            {"Mail", "Terminal", QString("A very long name of an application ").repeated(3)});
        for (const std::string_view tool : allTools) {
            SCOPED_TRACE(tool);
            for (const bool mirrored : {false, true}) {
                open(untrusted, tool);
                if (mirrored) {
                    mirror();
                }
                looks.expectNoOverlap();
                const QString name = QString::fromStdString(std::string(tool));
                ScreenLooks::keepPicture(view.grabWindow(), QString("%1-banner%2%3")
                                                                .arg(name, isLong ? "-long" : "",
                                                                     mirrored ? "-mirrored" : ""));
            }
        }
    }
}

TEST_F(ToolScreenLooks, MirroredWhereWritingRunsFromTheRight) {
    open(scrollTool);
    QQuickItem* back = button("Back");
    const QRectF before = place(back);
    const auto label = [&] {
        for (const QQuickItem* text : looks.textItems()) {
            if (text->property("text").toString() == "Reverse trackpad") {
                return ScreenLooks::letters(text);
            }
        }
        return QRectF();
    };
    const QRectF labelBefore = label();
    mirror();
    EXPECT_EQ(place(back).right(), 360 - before.left());
    EXPECT_NEAR(label().right(), 360 - labelBefore.left(), 1);
}

TEST_F(ToolScreenLooks, EverythingLiesOnWholePixels) {
    for (const std::string_view tool : allTools) {
        open(tool);
        const auto isDrawn = [](const QQuickItem& item) {
            return item.inherits("QQuickRectangle") || item.inherits("quillon::Symbol");
        };
        for (const QQuickItem* item : items(root(), isDrawn)) {
            const QPointF corner = place(item).topLeft();
            EXPECT_EQ(corner, QPointF(corner.toPoint()))
                << tool << ' ' << item->metaObject()->className() << ' '
                << item->property("name").toString().toStdString();
        }
    }
}

TEST_F(ToolScreenLooks, WholeScreensWithEdgesAndNames) {
    const QSize longest(360, 804);
    for (const bool dark : {false, true}) {
        ScreenLooks::setPalette(dark);
        view.setColor(dark ? QColor(43, 43, 47) : QColor(251, 251, 251));
        for (const std::string_view tool : allTools) {
            open(tool, longest);
            QObject* shown = manager;
            shown->setProperty("leftEdgeEnabled", true);
            shown->setProperty("reverseMouse", true);
            shown->setProperty("excludedAppNames", QStringList{"Mail", "Terminal"});
            settle();
            const QImage picture = view.grabWindow();
            looks.expectReadable(picture);
            ScreenLooks::keepPicture(picture, QString("%1-whole-%2")
                                                  .arg(QString::fromStdString(std::string(tool)),
                                                       dark ? "dark" : "light"));
        }
    }
}

} // namespace
} // namespace quillon
