#include "support/HubBench.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr const char* media = "tool.mediaControl";
constexpr const char* volume = "tool.volumeControl";

class HubStore : public testing::Test, public HubBench {
  protected:
    /// A catalog whose media tool has a package that takes a second.
    void offerPackage() {
        auto catalog = builtInCatalog();
        catalog[1].version = "2.0.0";
        catalog[1].downloadURL = packageUrl;
        desktop.urls.answer(catalogUrl, 200, encodeCatalog(catalog));
        desktop.urls.answer(packageUrl, 200, "abc", 1);
    }
    [[nodiscard]] bool isInstalling(const char* id) const {
        return store->installingToolIDs().contains(id);
    }
};

TEST_F(HubStore, StartsEmpty) {
    create();
    EXPECT_THAT(store->catalog(), IsEmpty());
    EXPECT_THAT(store->installed(), IsEmpty());
    EXPECT_EQ(store->selectedToolId(), "settings");
    EXPECT_FALSE(store->isBusy());
    EXPECT_THAT(store->installingToolIDs(), IsEmpty());
    EXPECT_EQ(store->modules().size(), 6U);
    EXPECT_EQ(store->metadataURL(), file("installed-tools.json"));
    EXPECT_TRUE(desktop.files.entries.contains(folder)) << "the folder is made at once";
    EXPECT_EQ(recordsFile(), "(none)");
}

TEST_F(HubStore, WithoutAPlaceForItsFileItUsesATemporaryOne) {
    desktop.files.support.reset();
    create();
    EXPECT_EQ(store->metadataURL(), "/tmp/com.pelorin.PelorinApp/installed-tools.json");
}

TEST_F(HubStore, OnAFirstLaunchEveryToolIsInstalledAndOn) {
    desktop.runLoop.advance(12.5);
    launch();
    ASSERT_EQ(store->installed().size(), 6U);
    for (const auto& record : store->installed()) {
        EXPECT_EQ(record, (InstalledToolRecord{
                              .id = record.id,
                              .version = "1.0.0",
                              .installedAt = std::chrono::sys_seconds(std::chrono::seconds(12)),
                              .isEnabled = true,
                              .isDownloaded = false}));
    }
    EXPECT_THAT(takeSwitches(),
                UnorderedElementsAre("+tool.windowSwitcher", "+tool.mediaControl",
                                     "+tool.volumeControl", "+tool.trackpadMiddleClick",
                                     "+tool.desktopSwitcher", "+tool.scrollReverse"));
    EXPECT_EQ(storedRecords(), store->installed());
    EXPECT_EQ(stored("HubMigrationV1Done"), DefaultsObject(true));
    EXPECT_FALSE(stored("HubEnabled.tool.mediaControl")) << "seeding writes no settings";
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(HubStore, WhatAnOlderReleaseHadOffIsSeededOff) {
    desktop.userDefaults.standard().set("Tool2Enabled", false);
    desktop.userDefaults.standard().set("Tool5Enabled", 1.0);
    launch();
    EXPECT_FALSE(store->isEnabled(media));
    EXPECT_TRUE(store->isInstalled(media));
    EXPECT_TRUE(store->isEnabled(volume));
    const auto told = takeSwitches();
    EXPECT_THAT(told, testing::Contains("-tool.mediaControl"));
    EXPECT_THAT(told, testing::Contains("+tool.volumeControl"));
}

TEST_F(HubStore, OnlyABoolIsRememberedAsOff) {
    for (const DefaultsObject& noBool : {DefaultsObject(0.0), DefaultsObject(std::string("no"))}) {
        desktop.userDefaults.standard().set("HubEnabled.tool.mediaControl", noBool);
        create();
        store->seedBuiltInTools();
        EXPECT_TRUE(store->isEnabled(media));
        settle();
        desktop.files.entries.clear();
    }
    desktop.userDefaults.standard().set("HubEnabled.tool.mediaControl", false);
    create();
    store->seedBuiltInTools();
    EXPECT_FALSE(store->isEnabled(media));
}

TEST_F(HubStore, SeedingLeavesRecordsAloneAndPersistsOnce) {
    const InstalledTools before{
        {.id = "tool.foreign", .version = "9", .isEnabled = true, .isDownloaded = true},
        {.id = media, .version = "0.9", .isEnabled = false, .isDownloaded = true}};
    writeRecords(encodeRecords(before));
    create();
    EXPECT_EQ(store->installed(), before);
    store->seedBuiltInTools();
    settle();
    EXPECT_EQ(store->installed().size(), 7U);
    EXPECT_EQ(store->installed()[0], before[0]) << "in the order in which they were added";
    EXPECT_EQ(store->installed()[1], before[1]);
    EXPECT_EQ(desktop.files.writes, 1);
    const std::string document = recordsFile();
    store->seedBuiltInTools();
    settle();
    EXPECT_EQ(desktop.files.writes, 2) << "also where nothing was added";
    EXPECT_EQ(recordsFile(), document);
}

TEST_F(HubStore, AppliesRecordsInTheirOrderToModulesThatThereAre) {
    writeRecords(encodeRecords({{.id = volume, .version = "1", .isEnabled = true},
                                {.id = "tool.foreign", .version = "1", .isEnabled = true},
                                {.id = media, .version = "1", .isEnabled = false}}));
    create();
    store->applyModuleStates();
    EXPECT_THAT(takeSwitches(), ElementsAre("+tool.volumeControl", "-tool.mediaControl"));
}

TEST_F(HubStore, AModuleIsAskedForByItsExactId) {
    launchWithCatalog();
    for (const char* id : {"", "tool.MediaControl", "tool.mediaControl ", "mediaControl"}) {
        EXPECT_FALSE(store->isInstalled(std::string_view(id)));
        EXPECT_EQ(store->displayName(id), id);
        takeSwitches();
        install(id);
        store->setEnabled(id, false);
        settle();
        EXPECT_THAT(takeSwitches(), IsEmpty()) << id;
        EXPECT_FALSE(stored("HubEnabled." + std::string(id)));
    }
}

TEST_F(HubStore, ADisplayNameComesFromTheCatalogThenTheModuleThenTheId) {
    create();
    EXPECT_EQ(store->displayName(media), "Media+") << "no catalog yet";
    desktop.urls.answer(catalogUrl, 200,
                        encodeCatalog({{.id = media, .name = "Sound+", .version = "1"}}));
    store->refreshCatalog();
    advance(0);
    EXPECT_EQ(store->displayName(media), "Sound+");
    EXPECT_EQ(store->displayName(volume), "Volume+");
    EXPECT_EQ(store->displayName("tool.nobody"), "tool.nobody");
}

TEST_F(HubStore, ADamagedFileIsAnEmptyOneAndIsKeptBesideTheNext) {
    const std::string good = encodeRecords({{.id = media, .version = "1"}});
    const std::vector<std::string> damaged{good.substr(0, good.size() / 2), "", "{}", "[{}]",
                                           "\x7f"
                                           "ELF"};
    for (const auto& document : damaged) {
        desktop.files.entries.clear();
        writeRecords(document);
        create();
        EXPECT_THAT(store->installed(), IsEmpty());
        EXPECT_EQ(recordsFile(), document) << "until something is written";
        store->seedBuiltInTools();
        settle();
        EXPECT_EQ(storedRecords()->size(), 6U);
        EXPECT_EQ(desktop.files.content(file("installed-tools.json.damaged")), document);
        EXPECT_THAT(lines, IsEmpty());
        store->seedBuiltInTools();
        settle();
        EXPECT_FALSE(desktop.files.content(file("installed-tools.json.damaged-2")));
    }
    writeRecords("[1]");
    create();
    store->seedBuiltInTools();
    settle();
    EXPECT_EQ(desktop.files.content(file("installed-tools.json.damaged-2")), "[1]")
        << "what was kept before stays";
}

TEST_F(HubStore, AnEmptyListIsNotDamaged) {
    writeRecords("[]");
    launch();
    EXPECT_EQ(store->installed().size(), 6U);
    EXPECT_FALSE(desktop.files.content(file("installed-tools.json.damaged")));
}

TEST_F(HubStore, OfTwoRecordsForOneToolTheFirstCounts) {
    writeRecords(encodeRecords({{.id = media, .version = "1", .isEnabled = true},
                                {.id = media, .version = "2", .isEnabled = false}}));
    create();
    ASSERT_EQ(store->installed().size(), 1U);
    EXPECT_EQ(store->installed()[0].version, "1");
}

TEST_F(HubStore, WhatCannotBeStoredStandsInMemory) {
    launch();
    desktop.files.failure = "the disk is full";
    store->setEnabled(media, false);
    settle();
    EXPECT_FALSE(store->isEnabled(media));
    EXPECT_THAT(takeLines(), ElementsAre("Failed to persist install metadata: the disk is full"));
    EXPECT_FALSE(store->flush());
    desktop.files.failure.reset();
    advance(100);
    EXPECT_NE(storedRecords(), store->installed()) << "nobody tries again";
    store->setEnabled(volume, false);
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(storedRecords(), store->installed());
}

TEST_F(HubStore, SwitchingChangesRecordSettingFileAndModule) {
    launch();
    takeSwitches();
    QSignalSpy changes(store.get(), &HubToolStore::installedChanged);
    for (const bool on : {false, true}) {
        store->setEnabled(media, on);
        EXPECT_EQ(record(media)->isEnabled, on);
        EXPECT_EQ(stored("HubEnabled.tool.mediaControl"), DefaultsObject(on));
        EXPECT_THAT(takeSwitches(), ElementsAre((on ? "+" : "-") + std::string(media)));
        settle();
        EXPECT_EQ(storedRecords(), store->installed());
    }
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(HubStore, TheModuleSeesTheNewRecord) {
    bool seen = true;
    store = HubToolStore::create(services, [&](const IsToolOn& isOn) {
        auto modules = hubToolDescriptions();
        modules[1].deactivate = [&seen, isOn] { seen = isOn(media); };
        return modules;
    });
    store->seedBuiltInTools();
    store->setEnabled(media, false);
    EXPECT_FALSE(seen);
    store->setEnabled(media, true);
    seen = true;
    store->uninstall(media);
    EXPECT_FALSE(seen);
}

TEST_F(HubStore, SwitchingWhatHasNoRecordChangesNothing) {
    create();
    store->setEnabled(media, false);
    settle();
    EXPECT_FALSE(stored("HubEnabled.tool.mediaControl"));
    EXPECT_EQ(recordsFile(), "(none)");
    EXPECT_THAT(takeSwitches(), IsEmpty());
}

TEST_F(HubStore, AnInstallWithoutAPackage) {
    launchWithCatalog();
    store->setEnabled(media, false);
    settle();
    takeSwitches();
    install(media);
    EXPECT_TRUE(record(media)->isEnabled);
    EXPECT_FALSE(record(media)->isDownloaded);
    EXPECT_EQ(store->installed().size(), 6U) << "in place of the old record";
    EXPECT_EQ(takeSwitches().size(), 6U) << "all modules are switched as their records say";
    EXPECT_EQ(storedRecords(), store->installed());
    EXPECT_FALSE(store->isBusy());
    EXPECT_FALSE(isInstalling(media));
    EXPECT_EQ(stored("HubEnabled.tool.mediaControl"), DefaultsObject(false));
}

TEST_F(HubStore, AnInstallIsUnderWayUntilItsPackageIsThere) {
    offerPackage();
    launchWithCatalog();
    QSignalSpy busy(store.get(), &HubToolStore::isBusyChanged);
    QSignalSpy installing(store.get(), &HubToolStore::installingToolIDsChanged);
    store->install(media);
    EXPECT_FALSE(isInstalling(media)) << "it begins with the next turn";
    advance(0.5);
    EXPECT_TRUE(isInstalling(media));
    EXPECT_TRUE(store->isBusy());
    EXPECT_EQ(store->property("installingToolIDs").toStringList(), QStringList{media});
    EXPECT_EQ(record(media)->version, "1.0.0");
    advance(0.5);
    EXPECT_FALSE(isInstalling(media));
    EXPECT_FALSE(store->isBusy());
    EXPECT_EQ(record(media)->version, "2.0.0");
    EXPECT_TRUE(record(media)->isDownloaded);
    EXPECT_EQ(busy.count(), 2);
    EXPECT_EQ(installing.count(), 2);
}

TEST_F(HubStore, AnInstallThatIsUnderWayIsNotBegunAgain) {
    offerPackage();
    launchWithCatalog();
    store->install(media);
    advance(0.5);
    store->install(media);
    advance(5);
    EXPECT_EQ(desktop.urls.requests().size(), 2U) << "the catalog and one package";
    store->install(media);
    store->install(media);
    advance(5);
    EXPECT_EQ(desktop.urls.requests().size(), 4U) << "two of one turn both begin";
    EXPECT_EQ(store->installed().size(), 6U);
}

TEST_F(HubStore, OfTwoInstallsTheFirstThatEndsClearsBusy) {
    offerPackage();
    auto catalog = builtInCatalog();
    catalog[1].downloadURL = packageUrl;
    catalog[3].downloadURL = "https://example.org/volume.bin";
    desktop.urls.answer(catalogUrl, 200, encodeCatalog(catalog));
    desktop.urls.answer("https://example.org/volume.bin", 200, "v", 2);
    launchWithCatalog();
    store->install(media);
    store->install(volume);
    advance(0.5);
    EXPECT_EQ(store->installingToolIDs().size(), 2U);
    advance(1);
    EXPECT_FALSE(store->isBusy());
    EXPECT_TRUE(isInstalling(volume));
    advance(1);
    EXPECT_FALSE(isInstalling(volume));
    EXPECT_TRUE(record(volume)->isDownloaded);
}

TEST_F(HubStore, AnInstallThatFailsChangesNothing) {
    launchWithCatalog();
    const auto before = store->installed();
    takeSwitches();
    desktop.files.put(file(media), {SimulatedFileManager::Kind::link, "/etc"});
    QSignalSpy ended(store.get(), &HubToolStore::installEnded);
    install(media);
    ASSERT_EQ(ended.count(), 1);
    const auto failure = ended[0][1].toString().toStdString();
    EXPECT_THAT(takeLines(), ElementsAre("Install failed for tool.mediaControl: " + failure));
    EXPECT_EQ(store->installed(), before);
    EXPECT_THAT(takeSwitches(), IsEmpty());
    EXPECT_FALSE(store->isBusy());
    EXPECT_FALSE(isInstalling(media));
}

TEST_F(HubStore, OnlyWhatTheCatalogOffersIsInstalled) {
    launch();
    install(media);
    EXPECT_THAT(desktop.urls.requests(), IsEmpty());
    EXPECT_FALSE(store->isBusy());
    desktop.urls.answer(catalogUrl, 200,
                        encodeCatalog({{.id = "tool.new", .name = "New+", .version = "3"}}));
    store->refreshCatalog();
    advance(0);
    takeSwitches();
    install("tool.new");
    EXPECT_EQ(record("tool.new")->version, "3");
    EXPECT_THAT(takeSwitches(), testing::SizeIs(6)) << "there is no module for it";
}

TEST_F(HubStore, UninstallingForgetsTheTool) {
    launchWithCatalog();
    install(media);
    EXPECT_TRUE(desktop.files.entries.contains(file(media)));
    takeSwitches();
    store->setSelectedToolId(media);
    QSignalSpy selected(store.get(), &HubToolStore::selectedToolIdChanged);
    store->uninstall(media);
    settle();
    EXPECT_FALSE(desktop.files.entries.contains(file(media)));
    EXPECT_FALSE(store->isInstalled(std::string_view(media)));
    EXPECT_EQ(stored("HubEnabled.tool.mediaControl"), DefaultsObject(false));
    EXPECT_EQ(store->selectedToolId(), "settings");
    EXPECT_EQ(selected.count(), 1);
    EXPECT_THAT(takeSwitches(), ElementsAre("-tool.mediaControl"));
    EXPECT_EQ(storedRecords()->size(), 5U);
    store->setSelectedToolId(volume);
    store->uninstall("tool.desktopSwitcher");
    EXPECT_EQ(store->selectedToolId(), volume);
}

TEST_F(HubStore, AnUninstalledToolComesBackOffAtTheNextLaunch) {
    launch();
    store->uninstall(media);
    settle();
    launch();
    EXPECT_TRUE(store->isInstalled(std::string_view(media)));
    EXPECT_FALSE(store->isEnabled(media));
    EXPECT_TRUE(store->isEnabled(volume));
}

TEST_F(HubStore, UninstallingGoesOnWhereTheFolderStays) {
    launch();
    desktop.files.put(file(std::string(media) + "/package.bin"),
                      {SimulatedFileManager::Kind::file, "x"});
    desktop.files.failure = "it is read-only";
    store->uninstall(media);
    settle();
    EXPECT_THAT(takeLines(), ElementsAre("Uninstall failed for tool.mediaControl: it is read-only",
                                         "Failed to persist install metadata: it is read-only"));
    EXPECT_FALSE(store->isInstalled(std::string_view(media)));
    desktop.files.failure.reset();
    store->uninstall("");
    store->uninstall("../x");
    settle();
    EXPECT_THAT(takeLines(), testing::SizeIs(2));
    EXPECT_TRUE(desktop.files.entries.contains(file("installed-tools.json")));
    EXPECT_EQ(storedRecords()->size(), 5U);
}

TEST_F(HubStore, TheCatalogIsPublishedWhenItIsThere) {
    launch();
    QSignalSpy published(store.get(), &HubToolStore::catalogChanged);
    desktop.urls.fail(catalogUrl, "no server", 3);
    store->refreshCatalog();
    advance(2.9);
    EXPECT_THAT(store->catalog(), IsEmpty());
    advance(0.2);
    EXPECT_EQ(store->catalog(), builtInCatalog());
    EXPECT_EQ(published.count(), 1);
}

TEST_F(HubStore, SelectingIsAnAssignment) {
    create();
    QSignalSpy selected(store.get(), &HubToolStore::selectedToolIdChanged);
    store->setProperty("selectedToolId", QString(volume));
    EXPECT_EQ(store->selectedToolId(), volume);
    store->setSelectedToolId(volume);
    EXPECT_EQ(selected.count(), 1);
}

TEST_F(HubStore, AtTheEndWhatIsUnderWayIsGivenUpAndTheRestStored) {
    offerPackage();
    launchWithCatalog();
    store->install(media);
    advance(0.5);
    store->refreshCatalog();
    store->setEnabled(volume, false);
    EXPECT_EQ(desktop.urls.underWay(), 2);
    store->end();
    EXPECT_EQ(desktop.urls.underWay(), 0);
    EXPECT_EQ(storedRecords(), store->installed());
    advance(10);
    EXPECT_EQ(record(media)->version, "1.0.0");
}

TEST_F(HubStore, TwoModulesWithOneIdAreAMistakeOfOurs) {
    EXPECT_DEATH(HubToolStore::create(services,
                                      [](const IsToolOn&) {
                                          auto modules = hubToolDescriptions();
                                          modules.push_back(modules.front());
                                          return modules;
                                      }),
                 "");
}

} // namespace
} // namespace quillon
