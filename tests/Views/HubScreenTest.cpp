#include "support/ScreenFixture.h"

#include <algorithm>

namespace quillon {
namespace {

/// Without the catalog's order nothing else matters.
const QStringList toolNames{"Window+", "Media+", "Desktop+", "Volume+", "Trackpad+", "Scroll+"};

struct HubScreen : ScreenFixture {
    [[nodiscard]] QStringList shownCards() const {
        QStringList found;
        for (const QQuickItem* item : items(root(), [](const QQuickItem& each) {
                 return each.inherits("QQuickRectangle") && each.property("subtitle").isValid();
             })) {
            found.append(item->property("name").toString());
        }
        return found;
    }
};

TEST_F(HubScreen, SectionsAndCardsInTheirOrder) {
    QStringList expected{"Quillon", "Donate", "Installed", "6"};
    for (const ToolCatalogItem& item : builtInCatalog()) {
        expected << QString::fromStdString(item.name) << QString::fromStdString(item.subtitle)
                 << "Customize"
                 << "Remove";
    }
    expected << "Marketplace"
             << "0"
             << "Every tool is installed.";
    EXPECT_EQ(texts(), expected);
}

TEST_F(HubScreen, ToolsThatAreNotInstalledAreInTheMarketplace) {
    simulated.store->uninstall(mediaTool);
    settle();
    EXPECT_EQ(shownCards(),
              (QStringList{"Window+", "Desktop+", "Volume+", "Trackpad+", "Scroll+", "Media+"}));
    EXPECT_EQ(texts(*card("Media+")).mid(0, 1), QStringList{"Media+"});
    EXPECT_NE(button("Install", card("Media+")), nullptr);
    EXPECT_TRUE(accessibles(QAccessible::Button, "Customize", card("Media+")).empty());
}

TEST_F(HubScreen, SectionsFoldUpAndDown) {
    simulated.store->uninstall(mediaTool);
    settle();
    click(button("Installed"));
    EXPECT_EQ(shownCards(), QStringList{"Media+"});
    EXPECT_FALSE(known(button("Installed"))->state().checked);
    click(button("Marketplace"));
    EXPECT_EQ(shownCards(), QStringList{});
    click(button("Installed"));
    click(button("Marketplace"));
    EXPECT_EQ(shownCards().size(), 6);
    EXPECT_TRUE(known(button("Installed"))->state().checked);
    QQuickItem* list =
        item([](const QQuickItem& each) { return each.property("installedExpanded").isValid(); });
    list->setProperty("installedExpanded", false);
    settle();
    EXPECT_EQ(shownCards(), QStringList{"Media+"}) << "the screen's own state";
}

TEST_F(HubScreen, PowerSwitchesTheToolThroughTheStore) {
    QQuickItem* power = button("Power", card("Window+"));
    EXPECT_TRUE(known(power)->state().checked);
    click(power);
    EXPECT_FALSE(simulated.store->isEnabled(windowTool));
    EXPECT_FALSE(known(power)->state().checked);
    click(power);
    EXPECT_TRUE(simulated.store->isEnabled(windowTool));
    simulated.store->setEnabled(windowTool, false);
    settle();
    EXPECT_FALSE(known(power)->state().checked) << "whoever did it";
}

TEST_F(HubScreen, RemovalAsksFirst) {
    click(button("Remove", card("Volume+")));
    EXPECT_TRUE(root().property("showRemoveConfirm").toBool());
    EXPECT_TRUE(root().property("sheetAttached").toBool());
    QQuickItem* sheet = accessible(QAccessible::Dialog, "Remove Volume+?");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(texts(*sheet), (QStringList{"Remove Volume+?", "This will uninstall the tool.",
                                          "Cancel", "Remove"}));
    click(button("Cancel"));
    EXPECT_FALSE(root().property("sheetAttached").toBool());
    EXPECT_TRUE(simulated.store->isInstalled("tool.volumeControl"));
    EXPECT_TRUE(simulated.store->isEnabled("tool.volumeControl"));

    click(button("Remove", card("Volume+")));
    click(button("Remove", accessible(QAccessible::Dialog, "Remove Volume+?")));
    EXPECT_FALSE(root().property("sheetAttached").toBool());
    EXPECT_FALSE(simulated.store->isInstalled("tool.volumeControl"));
    EXPECT_EQ(shownCards().last(), "Volume+");
}

TEST_F(HubScreen, NothingBelowTheSheetCanBePressed) {
    QQuickItem* power = button("Power", card("Window+"));
    QQuickItem* remove = button("Remove", card("Window+"));
    remove->forceActiveFocus();
    key(Qt::Key_Return);
    click(power);
    EXPECT_TRUE(simulated.store->isEnabled(windowTool));
    for (int i = 0; i < 4; ++i) {
        key(Qt::Key_Tab);
        const QQuickItem* sheet = accessible(QAccessible::Dialog, "Remove Window+?");
        ASSERT_NE(view.activeFocusItem(), nullptr);
        EXPECT_TRUE(sheet->isAncestorOf(view.activeFocusItem()));
    }
    bool wentBack = false;
    QMetaObject::invokeMethod(&root(), "goBack", Q_RETURN_ARG(bool, wentBack));
    settle();
    EXPECT_TRUE(wentBack) << "Escape leaves the question first";
    EXPECT_FALSE(root().property("sheetAttached").toBool());
    EXPECT_EQ(view.activeFocusItem(), remove) << "where it was";
}

TEST_F(HubScreen, TheQuestionGoesWhenSomebodyElseHasAnsweredIt) {
    click(button("Remove", card("Window+")));
    simulated.store->uninstall(windowTool);
    settle();
    EXPECT_FALSE(root().property("sheetAttached").toBool());
}

/// The catalog's server has a package of the media control, which takes a second to come.
struct HubScreenWithPackage : HubScreen {
    void SetUp() override {
        auto catalog = builtInCatalog();
        catalog[1].downloadURL = "https://example.org/media.zip";
        simulated.desktop.urls.answer("http://localhost:8787/tools/catalog", 200,
                                      encodeCatalog(catalog));
        simulated.desktop.urls.answer(*catalog[1].downloadURL, 200, "abc", 1);
        simulated.start();
        simulated.store->uninstall(mediaTool);
        simulated.pass(1);
        HubScreen::SetUp();
    }
};

TEST_F(HubScreenWithPackage, InstallShowsThatItIsUnderWayAndTheToolMovesByItself) {
    QQuickItem* install = button("Install", card("Media+"));
    click(install);
    const QPoint place = install->mapToScene(QPointF(20, 10)).toPoint();
    simulated.pass(0.4);
    settle();
    EXPECT_TRUE(texts(*card("Media+")).contains("Installing…"));
    EXPECT_TRUE(accessibles(QAccessible::Button, "Install").empty());
    QTest::mouseClick(&view, Qt::LeftButton, {}, place); // it meets the spinner
    simulated.pass(0.4);
    EXPECT_EQ(simulated.store->installingToolIDs().size(), 1U);
    simulated.pass(2);
    settle();
    EXPECT_TRUE(simulated.store->isInstalled(mediaTool));
    EXPECT_EQ(shownCards(), toolNames);
    const auto& requests = simulated.desktop.urls.requests();
    EXPECT_EQ(std::ranges::count(requests, "https://example.org/media.zip", &UrlRequest::url), 1);
}

TEST_F(HubScreenWithPackage, AFailedInstallLeavesTheToolWhereItWas) {
    simulated.desktop.files.failure = "the disk is full";
    click(button("Install", card("Media+")));
    simulated.pass(2);
    settle();
    EXPECT_NE(button("Install", card("Media+")), nullptr);
    EXPECT_FALSE(simulated.store->isInstalled(mediaTool));
}

TEST_F(HubScreen, SettingsOfAToolInThePlaceOfTheListAndBack) {
    click(button("Customize", card("Desktop+")));
    EXPECT_EQ(simulated.store->selectedToolId(), "tool.desktopSwitcher");
    EXPECT_TRUE(shownCards().isEmpty());
    click(button("Back"));
    EXPECT_EQ(simulated.store->selectedToolId(), "settings");
    EXPECT_EQ(shownCards(), toolNames);
}

TEST_F(HubScreen, EscapeGoesBackFirst) {
    click(button("Customize", card("Desktop+")));
    const auto goBack = [this] {
        bool wentBack = false;
        QMetaObject::invokeMethod(&root(), "goBack", Q_RETURN_ARG(bool, wentBack));
        settle();
        return wentBack;
    };
    EXPECT_TRUE(goBack());
    EXPECT_EQ(simulated.store->selectedToolId(), "settings");
    EXPECT_FALSE(goBack()) << "and then leaves the hub";
}

TEST_F(HubScreen, ASelectedToolThatIsNotInstalled) {
    simulated.store->uninstall(mediaTool);
    simulated.store->setSelectedToolId(std::string(mediaTool));
    settle();
    EXPECT_TRUE(texts().contains("Install required"));
    EXPECT_EQ(symbols(), (QStringList{"cup.and.saucer.fill", "chevron.left", "arrow.down.circle"}));
    EXPECT_FALSE(texts().contains("Restart the app to load this tool."));
    click(button("Back"));
    EXPECT_EQ(simulated.store->selectedToolId(), "settings");
}

TEST_F(HubScreen, AnInstalledToolThatCannotBeLoaded) {
    view.setSource({});
    simulated.desktop.files.put(
        *simulated.desktop.files.support / "com.pelorin.PelorinApp/installed-tools.json",
        {SimulatedFileManager::Kind::file,
         encodeRecords({{.id = "tool.other", .version = "1", .isEnabled = true}})});
    simulated.start();
    show();
    EXPECT_EQ(shownCards().last(), "tool.other");
    simulated.store->setSelectedToolId("tool.other");
    settle();
    EXPECT_EQ(texts().mid(2), (QStringList{"tool.other", "tool.other is installed",
                                           "Restart the app to load this tool."}));
    EXPECT_TRUE(symbols().contains("externaldrive.fill"));
    for (const QString& text : texts().mid(3)) {
        EXPECT_NE(accessible(QAccessible::StaticText, text), nullptr);
    }
}

TEST_F(HubScreen, EveryCardHasItsSymbols) {
    QStringList expected{"cup.and.saucer.fill", "chevron.down"};
    for (const ToolCatalogItem& item : builtInCatalog()) {
        expected << QString::fromStdString(item.icon) << "power";
    }
    EXPECT_EQ(symbols(), expected << "chevron.down");
}

TEST_F(HubScreen, ALongNameLeavesRoomForTheAnswer) {
    auto catalog = builtInCatalog();
    catalog[0].name = std::string(400, 'W') + "<b>";
    simulated.desktop.urls.answer("http://localhost:8787/tools/catalog", 200,
                                  encodeCatalog(catalog));
    simulated.store->refreshCatalog();
    simulated.pass(1);
    settle();
    const QString name = QString::fromStdString(catalog[0].name);
    click(button("Remove", card(name)));
    QQuickItem* sheet = accessible(QAccessible::Dialog, "Remove " + name + "?");
    ASSERT_NE(sheet, nullptr);
    draw();
    for (const char* answer : {"Cancel", "Remove"}) {
        QQuickItem* item = button(answer, sheet);
        const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        EXPECT_TRUE(QRectF(QPointF(), view.size()).contains(place)) << answer;
    }
    for (const QQuickItem* text :
         items(*sheet, [](const QQuickItem& each) { return each.inherits("QQuickText"); })) {
        EXPECT_LE(text->property("contentWidth").toDouble(), text->width());
    }
}

TEST_F(HubScreen, WhatIsTypedIsGoneWithTheScreen) {
    const auto field = [this] {
        return accessible(QAccessible::EditableText, "App name (e.g. Slack)");
    };
    click(button("Customize", card("Window+")));
    field()->forceActiveFocus();
    key(Qt::Key_X);
    EXPECT_EQ(field()->property("text").toString(), "x");
    click(button("Back"));
    click(button("Customize", card("Window+")));
    EXPECT_EQ(field()->property("text").toString(), "");
}

TEST_F(HubScreen, RemovalOfTheSelectedToolLeadsBackToTheList) {
    simulated.store->setSelectedToolId(std::string(mediaTool));
    settle();
    simulated.store->uninstall(mediaTool);
    settle();
    EXPECT_EQ(shownCards().size(), 6);
}

TEST_F(HubScreen, BannerComesAndGoesByItself) {
    EXPECT_TRUE(accessibles(QAccessible::Button, "Open System Settings").empty());
    simulated.trust(false);
    settle();
    EXPECT_EQ(texts().at(2), "Accessibility permission is required for Scroll+.")
        << "the only one that goes on asking";
    click(button("Open System Settings"));
    EXPECT_EQ(simulated.took("open"),
              std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.security?"
                                       "Privacy_Accessibility"});
    simulated.trust(true);
    settle();
    EXPECT_TRUE(accessibles(QAccessible::Button, "Open System Settings").empty());
}

TEST_F(HubScreen, DonationPageIsOpenedInTheBrowser) {
    simulated.desktop.bundle.info["DonationURL"] = "https://example.org/give";
    view.setSource({});
    simulated.start();
    show();
    click(button("Donate"));
    EXPECT_EQ(simulated.took("open"), std::vector<std::string>{"https://example.org/give"});
}

TEST_F(HubScreen, EverythingIsReachedByKeyboard) {
    QStringList reached;
    for (int i = 0; i < 40; ++i) {
        key(Qt::Key_Tab);
        auto* const item = view.activeFocusItem();
        ASSERT_NE(item, nullptr);
        const auto* const found = known(item);
        ASSERT_NE(found, nullptr);
        const QString name =
            found->text(QAccessible::Name) + "|" + found->text(QAccessible::Description);
        if (reached.contains(name)) {
            break;
        }
        reached.append(name);
        EXPECT_EQ(focusRings(), 1U) << name.toStdString();
        const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        EXPECT_GE(place.top(), 0) << name.toStdString();
        EXPECT_LE(place.bottom(), view.height()) << name.toStdString();
    }
    QStringList expected{"Donate|", "Installed|6"};
    for (const QString& name : toolNames) {
        expected << "Power|" + name << "Customize|" + name << "Remove|" + name;
    }
    expected << "Marketplace|0";
    EXPECT_EQ(reached, expected);
    key(Qt::Key_Backtab);
    key(Qt::Key_Space);
    EXPECT_FALSE(known(button("Marketplace"))->state().checked);
}

} // namespace
} // namespace quillon
