#include "HubOnFiles.h"

#include "Hub/EnabledKey.h"
#include "Hub/InstalledToolRecord.h"
#include "Hub/ToolCatalogItem.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace quillon {
namespace {

using Outcome = HubReply::Outcome;
using Verb = HubRequest::Verb;

constexpr const char* folder = "/home/user/.local/share/com.pelorin.PelorinApp";
constexpr const char* volume = "tool.volumeControl";
constexpr const char* catalog = "http://localhost:8787/tools/catalog";

struct HubOnFiles : testing::Test {
    std::string log;
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& text) {
        log += std::string(kind) + " " + text + "\n";
    }};
    bool settingsReachDisk = true;
    bool userHasEnough = false;
    bool ended = false;
    int runs = 0;

    HubReply run(Verb verb, const std::string& id = "") {
        ended = false;
        return hubOnFiles({verb, id}, {.services = HubServices::of(desktop.platform),
                                       .version = "1.2.3",
                                       .flushSettings = [this] { return settingsReachDisk; },
                                       .run = [this] { runLoop(); },
                                       .quit = [this] { ended = true; }});
    }

    void runLoop() {
        ++runs;
        constexpr int enough = 100; // seconds
        for (int i = 0; i < enough && !ended && !userHasEnough; ++i) {
            desktop.runLoop.advance(1);
        }
    }

    [[nodiscard]] InstalledTools records() const {
        const auto text = desktop.files.content(std::string(folder) + "/installed-tools.json");
        return text ? decodeRecords(*text).value_or(InstalledTools()) : InstalledTools();
    }
    [[nodiscard]] const InstalledToolRecord* record(const std::string& id) {
        kept = records();
        const auto found = std::ranges::find(kept, id, &InstalledToolRecord::id);
        return found == kept.end() ? nullptr : &*found;
    }
    InstalledTools kept;
};

TEST_F(HubOnFiles, TellingWritesNothing) {
    for (const auto verb : {Verb::status, Verb::list}) {
        const auto reply = run(verb);
        EXPECT_EQ(reply.outcome, Outcome::done);
        EXPECT_TRUE(reply.text.starts_with(R"({"running":false,"version":"1.2.3","busy":false)"));
        EXPECT_NE(reply.text.find(R"("id":"tool.volumeControl","name":"Volume+")"),
                  std::string::npos)
            << reply.text;
        EXPECT_EQ(reply.text.find(R"("installed":true)"), std::string::npos);
    }
    EXPECT_TRUE(desktop.files.entries.empty()) << desktop.files.entries.begin()->first;
    EXPECT_EQ(desktop.userDefaults.standard().writes(), 0);
    EXPECT_TRUE(desktop.urls.requests().empty());
}

TEST_F(HubOnFiles, AChangeBeforeTheFirstStartDoesWhatThatDoes) {
    desktop.userDefaults.standard().set("Tool4Enabled", false); // of an older release
    EXPECT_EQ(run(Verb::disable, volume).outcome, Outcome::done);
    EXPECT_EQ(records().size(), 6U);
    ASSERT_NE(record(volume), nullptr);
    EXPECT_FALSE(record(volume)->isEnabled);
    EXPECT_TRUE(record("tool.mediaControl")->isEnabled);
    EXPECT_FALSE(record("tool.desktopSwitcher")->isEnabled);
    EXPECT_EQ(desktop.userDefaults.standard().object(enabledKey(volume)), DefaultsObject(false));
    EXPECT_EQ(runs, 0) << "nothing to wait for";

    EXPECT_EQ(run(Verb::enable, volume).outcome, Outcome::done);
    EXPECT_TRUE(record(volume)->isEnabled);
    EXPECT_NE(run(Verb::status).text.find(R"("installed":true,"enabled":true)"), std::string::npos);
}

TEST_F(HubOnFiles, Uninstalls) {
    EXPECT_EQ(run(Verb::uninstall, volume).outcome, Outcome::done);
    EXPECT_EQ(records().size(), 5U);
    EXPECT_EQ(record(volume), nullptr);
}

TEST_F(HubOnFiles, InstallsWhatTheServerOffers) {
    desktop.urls.answer(catalog, 200,
                        encodeCatalog({{.id = "tool.new",
                                        .name = "New",
                                        .subtitle = "",
                                        .icon = "",
                                        .version = "3.0",
                                        .minHubVersion = "1"}}),
                        5);
    EXPECT_EQ(run(Verb::install, "tool.new").outcome, Outcome::done);
    ASSERT_NE(record("tool.new"), nullptr);
    EXPECT_EQ(record("tool.new")->version, "3.0");
}

TEST_F(HubOnFiles, InstallsBuiltInToolsWithoutAServer) {
    EXPECT_EQ(run(Verb::install, volume).outcome, Outcome::done);
    EXPECT_NE(record(volume), nullptr);
    EXPECT_FALSE(record(volume)->isDownloaded);
}

TEST_F(HubOnFiles, AnInstallCanBeInterrupted) {
    userHasEnough = true;
    const auto reply = run(Verb::install, volume);
    EXPECT_EQ(reply.outcome, Outcome::failed);
    EXPECT_NE(reply.text.find("interrupted"), std::string::npos) << reply.text;
    EXPECT_EQ(records().size(), 6U) << "what was there before";
    desktop.runLoop.drain(); // what was under way calls nobody who is gone
}

TEST_F(HubOnFiles, UnknownToolsAreSaidAndGuessed) {
    for (const auto verb : {Verb::enable, Verb::disable, Verb::install, Verb::uninstall}) {
        auto reply = run(verb, "tool.VolumeControl");
        EXPECT_EQ(reply.outcome, Outcome::failed);
        EXPECT_EQ(reply.text, "there is no tool 'tool.VolumeControl'; did you mean "
                              "tool.volumeControl?");
        EXPECT_EQ(run(verb, "nonsense").text, "there is no tool 'nonsense'");
    }
}

TEST_F(HubOnFiles, WhatCannotBeStoredFails) {
    settingsReachDisk = false;
    EXPECT_EQ(run(Verb::disable, volume).text, "the change could not be stored");
    settingsReachDisk = true;
    desktop.files.failure = "the disk is full";
    const auto reply = run(Verb::enable, volume);
    EXPECT_EQ(reply.outcome, Outcome::failed);
    EXPECT_EQ(reply.text, "the change could not be stored");
    EXPECT_NE(log.find("the disk is full"), std::string::npos) << log;
}

TEST_F(HubOnFiles, ThereIsNobodyToShowOrToQuit) {
    EXPECT_EQ(run(Verb::show).outcome, Outcome::notRunning);
    EXPECT_EQ(run(Verb::quit).outcome, Outcome::notRunning);
    EXPECT_TRUE(desktop.files.entries.empty());
}

} // namespace
} // namespace quillon
