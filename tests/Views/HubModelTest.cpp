#include "support/SimulatedHub.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

namespace quillon {
namespace {

const std::vector<std::string> permitted{"tool.windowSwitcher", "tool.trackpadMiddleClick",
                                         "tool.mediaControl",   "tool.desktopSwitcher",
                                         "tool.volumeControl",  "tool.scrollReverse"};

QStringList names(const ToolListModel& model) {
    QStringList found;
    for (int row = 0; row < model.rowCount(); ++row) {
        found.append(model.data(model.index(row), ToolListModel::Name).toString());
    }
    return found;
}

struct UntrustedHub : testing::Test {
    SimulatedHub simulated{false};

    /// With just so many of the tools on, counted in the order in which they are named.
    QString messageWith(std::size_t count) {
        for (std::size_t i = 0; i < permitted.size(); ++i) {
            simulated.store->setEnabled(permitted[i], i < count);
        }
        return simulated.hub->permissionMessage();
    }
};

TEST_F(UntrustedHub, NamesThreeToolsAndCountsTheRest) {
    EXPECT_TRUE(simulated.hub->isPermissionMissing());
    const QString start = "Accessibility permission is required for ";
    EXPECT_EQ(messageWith(0), start + "input-based tools.");
    EXPECT_EQ(messageWith(1), start + "Window+.");
    EXPECT_EQ(messageWith(2), start + "Window+, Trackpad+.");
    EXPECT_EQ(messageWith(3), start + "Window+, Trackpad+, Media+.");
    EXPECT_EQ(messageWith(4), start + "Window+, Trackpad+, Media+ and 1 more.");
    EXPECT_EQ(messageWith(5), start + "Window+, Trackpad+, Media+ and 2 more.");
    EXPECT_EQ(messageWith(6), start + "Window+, Trackpad+, Media+ and 3 more.");
}

TEST_F(UntrustedHub, ToolsThatAreNotInstalledAreNotNamed) {
    messageWith(3);
    simulated.store->uninstall("tool.trackpadMiddleClick");
    EXPECT_EQ(simulated.hub->permissionMessage(),
              "Accessibility permission is required for Window+, Media+.");
}

TEST_F(UntrustedHub, TellsWhenThePermissionIsThere) {
    QSignalSpy changed(simulated.hub.get(), &HubModel::permissionChanged);
    simulated.trust(true);
    EXPECT_FALSE(simulated.hub->isPermissionMissing());
    EXPECT_GE(changed.count(), 1);
    EXPECT_EQ(simulated.hub->permissionMessage(),
              "Accessibility permission is required for input-based tools.");
}

struct HubModelTest : testing::Test {
    SimulatedHub simulated;

    void answerCatalog(const ToolCatalog& catalog) {
        simulated.desktop.urls.answer("http://localhost:8787/tools/catalog", 200,
                                      encodeCatalog(catalog));
        simulated.store->refreshCatalog();
        simulated.pass(1);
    }
};

TEST_F(HubModelTest, WhatACatalogLeavesOutComesLastUnderItsModulesName) {
    answerCatalog({{.id = "tool.scrollReverse",
                    .name = "Turned",
                    .subtitle = "s",
                    .icon = "star.fill",
                    .version = "1",
                    .minHubVersion = "1"},
                   {.id = "tool.new",
                    .name = "New",
                    .subtitle = "n",
                    .icon = "bolt.fill",
                    .version = "1",
                    .minHubVersion = "1"}});
    EXPECT_EQ(names(*simulated.hub->installed()),
              (QStringList{"Turned", "Window+", "Media+", "Desktop+", "Volume+", "Trackpad+"}));
    EXPECT_EQ(names(*simulated.hub->marketplace()), QStringList{"New"});
}

TEST_F(HubModelTest, TwoInstallsInOneTurnAreOne) {
    auto catalog = builtInCatalog();
    catalog[1].downloadURL = "https://example.org/media.zip";
    answerCatalog(catalog);
    simulated.desktop.urls.answer(*catalog[1].downloadURL, 200, "abc", 1);
    const auto isInstalling = [this] {
        const ToolListModel& market = *simulated.hub->marketplace();
        return market.data(market.index(0), ToolListModel::IsInstalling).toBool();
    };
    const auto fetched = [&] {
        return std::ranges::count(simulated.desktop.urls.requests(), *catalog[1].downloadURL,
                                  &UrlRequest::url);
    };
    for (int round = 1; round <= 2; ++round) {
        simulated.store->uninstall("tool.mediaControl");
        simulated.pass(0);
        simulated.hub->install("tool.mediaControl");
        EXPECT_TRUE(isInstalling()) << "at once";
        simulated.hub->install("tool.mediaControl");
        simulated.pass(3);
        EXPECT_EQ(fetched(), round) << "and again once it has ended";
        EXPECT_TRUE(simulated.store->isInstalled("tool.mediaControl"));
    }
}

TEST_F(HubModelTest, SelectedToolIsDescribedByItsModule) {
    auto catalog = builtInCatalog();
    for (ToolCatalogItem& item : catalog) {
        item.name = "Of the catalog";
        item.icon = "star.fill";
    }
    answerCatalog(catalog);
    EXPECT_EQ(simulated.hub->selected().toolId, "");
    QSignalSpy changed(simulated.hub.get(), &HubModel::selectedChanged);
    simulated.hub->customize("tool.volumeControl");
    EXPECT_EQ(changed.count(), 1);
    const SelectedTool& selected = simulated.hub->selected();
    EXPECT_EQ(selected.name, "Volume+");
    EXPECT_EQ(selected.icon, "speaker.wave.2.fill");
    EXPECT_EQ(selected.subtitle, "Edge scrolling controls volume");
    EXPECT_TRUE(selected.isInstalled);
    EXPECT_EQ(selected.manager, &simulated.managers.volumeControl());
    simulated.hub->showTools();
    EXPECT_EQ(simulated.hub->selected().toolId, "");
}

TEST_F(HubModelTest, BothToolsOfOneManagerShowThatOne) {
    simulated.hub->customize("tool.trackpadMiddleClick");
    EXPECT_EQ(simulated.hub->selected().manager, &simulated.managers.windowSwitcher());
}

ToolCards cards(std::initializer_list<const char*> ids) {
    ToolCards made{.total = ids.size()};
    for (const char* id : ids) {
        made.first.push_back({.toolId = id, .name = id});
    }
    return made;
}

TEST(ToolListModelTest, ChangesOnlyTheRowsThatDiffer) {
    ToolListModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setCards(cards({"a", "b", "c", "d"}));
    QSignalSpy inserted(&model, &ToolListModel::rowsInserted);
    QSignalSpy removed(&model, &ToolListModel::rowsRemoved);
    QSignalSpy moved(&model, &ToolListModel::rowsMoved);
    QSignalSpy changed(&model, &ToolListModel::dataChanged);
    model.setCards(cards({"a", "b", "c", "d"}));
    EXPECT_EQ(inserted.count() + removed.count() + moved.count() + changed.count(), 0);
    model.setCards(cards({"d", "a", "x", "c"}));
    EXPECT_EQ(names(model), (QStringList{"d", "a", "x", "c"}));
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(changed.count(), 0);
    auto enabled = cards({"d", "a", "x", "c"});
    enabled.first[1].isEnabled = true;
    model.setCards(enabled);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(model.data(model.index(1), ToolListModel::IsEnabled).toBool());
}

TEST_F(HubModelTest, LongListsAreShownAPageAtATime) {
    ToolCatalog many;
    for (int i = 0; i < 50; ++i) {
        const std::string number = std::to_string(i);
        many.push_back({.id = "tool.of" + number,
                        .name = number,
                        .subtitle = "s",
                        .icon = "star.fill",
                        .version = "1",
                        .minHubVersion = "1"});
    }
    ToolListModel& market = *simulated.hub->marketplace();
    QAbstractItemModelTester tester(&market, QAbstractItemModelTester::FailureReportingMode::Fatal);
    answerCatalog(many);
    EXPECT_EQ(market.total(), 50);
    EXPECT_EQ(market.count(), 20);
    market.showMore();
    EXPECT_EQ(market.count(), 40);
    market.showMore();
    EXPECT_EQ(market.count(), 50);
    many.erase(many.begin());
    answerCatalog(many);
    EXPECT_EQ(names(market).front(), "1");
    EXPECT_EQ(market.count(), 49);
    EXPECT_EQ(market.total(), 49);
    EXPECT_EQ(simulated.hub->installed()->count(), 6);
}

} // namespace
} // namespace quillon
