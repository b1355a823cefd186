#include "support/ScreenFixture.h"

#include <algorithm>

namespace quillon {
namespace {

/// What moves, and that it rests where it belongs.
struct HubMotion : ScreenFixture {
    void SetUp() override { show(); }
    void TearDown() override { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }

    [[nodiscard]] QQuickItem* toolPlace() const {
        return item([](const QQuickItem& each) { return each.inherits("QQuickLoader"); });
    }
    [[nodiscard]] QQuickItem* listPlace() const {
        return item([](const QQuickItem& each) {
                   return each.property("installedExpanded").isValid();
               })
            ->parentItem();
    }
    static bool rests(const QQuickItem* item) {
        return QTest::qWaitFor([item] { return item->x() == 0 && item->opacity() == 1; });
    }
};

TEST_F(HubMotion, ToolsComeFromWhereRowsEndAndTheListFromWhereTheyBegin) {
    for (const bool mirrored : {false, true}) {
        SCOPED_TRACE(mirrored);
        QGuiApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        const double end = mirrored ? -1 : 1;
        simulated.store->setSelectedToolId("tool.mediaControl");
        EXPECT_GT(toolPlace()->x() * end, 100);
        EXPECT_LT(toolPlace()->opacity(), 0.5);
        EXPECT_TRUE(rests(toolPlace()));

        simulated.store->setSelectedToolId("settings");
        EXPECT_LT(listPlace()->x() * end, -100);
        EXPECT_LT(listPlace()->opacity(), 0.5);
        EXPECT_TRUE(rests(listPlace()));
    }
}

TEST_F(HubMotion, ATurnOnTheWayEndsWhereItBelongs) {
    simulated.store->setSelectedToolId("tool.mediaControl");
    simulated.store->setSelectedToolId("settings");
    simulated.store->setSelectedToolId("tool.volumeControl");
    EXPECT_TRUE(rests(toolPlace()));
    simulated.store->setSelectedToolId("settings");
    EXPECT_TRUE(rests(listPlace()));
}

TEST_F(HubMotion, NothingSlidesForThoseWhoDoNotBearIt) {
    simulated.desktop.workspace.choose({.shouldReduceMotion = true});
    simulated.store->setSelectedToolId("tool.mediaControl");
    EXPECT_EQ(toolPlace()->x(), 0);
    EXPECT_EQ(toolPlace()->opacity(), 1);
}

TEST_F(HubMotion, SectionsFoldAndTheirChevronsTurn) {
    QQuickItem* chevron = nullptr;
    for (QQuickItem* child : button("Installed")->childItems()) {
        if (child->property("name").toString() == "chevron.down") {
            chevron = child;
        }
    }
    ASSERT_NE(chevron, nullptr);
    EXPECT_EQ(chevron->rotation(), 0);
    const double below = button("Marketplace")->mapToScene(QPointF()).y();
    QSignalSpy turns(chevron, &QQuickItem::rotationChanged);
    click(button("Installed"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return chevron->rotation() == -90; }));
    EXPECT_GT(turns.count(), 2) << "by and by";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        draw();
        return button("Marketplace")->mapToScene(QPointF()).y() < below - 300;
    }));
}

TEST_F(HubMotion, TheSpinnerTurnsOnlyWhileItIsSeen) {
    auto catalog = builtInCatalog();
    catalog[1].downloadURL = "https://example.org/media.zip";
    simulated.desktop.urls.answer("http://localhost:8787/tools/catalog", 200,
                                  encodeCatalog(catalog));
    simulated.desktop.urls.answer(*catalog[1].downloadURL, 200, "abc", 1000);
    simulated.store->refreshCatalog();
    simulated.store->uninstall("tool.mediaControl");
    simulated.pass(1);
    settle();
    const auto isTurning = [this] {
        const QQuickItem* spinner = item([](const QQuickItem& each) {
            return each.inherits("QQuickItem") &&
                   QString(each.metaObject()->className()).startsWith("Spinner");
        });
        const auto children = spinner->findChildren<QObject*>();
        const auto found = std::find_if(children.begin(), children.end(), [](const QObject* each) {
            return each->inherits("QQuickRotationAnimation");
        });
        return (*found)->property("running").toBool();
    };
    simulated.hub->install("tool.mediaControl");
    settle();
    EXPECT_TRUE(isTurning());
    view.hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isTurning(); }));
    view.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isTurning(); }));
    simulated.desktop.workspace.choose({.shouldReduceMotion = true});
    EXPECT_FALSE(isTurning());
}

} // namespace
} // namespace quillon
