#include "Hub/HubCommands.h"

#include "support/HubBench.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quillon {
namespace {

using Verb = HubCommand::Verb;
using Json = nlohmann::ordered_json;

class Commands : public testing::Test, public HubBench {
  protected:
    Commands() {
        launchWithCatalog();
        commands = std::make_unique<HubCommands>(*store);
    }

    /// "done", or what went wrong; nothing while it is under way.
    std::optional<std::string> perform(Verb verb, const std::string& id) {
        outcome.reset();
        commands->perform({verb, id}, [this](const HubCommands::Outcome& result) {
            EXPECT_FALSE(outcome) << "told twice";
            outcome = result.value_or("done");
        });
        return outcome;
    }

    Json status() { return Json::parse(commands->status()); }

    std::unique_ptr<HubCommands> commands;
    std::optional<std::string> outcome;
};

TEST_F(Commands, SwitchInstalledTools) {
    EXPECT_EQ(perform(Verb::disable, "tool.mediaControl"), "done");
    EXPECT_FALSE(store->isEnabled("tool.mediaControl"));
    EXPECT_EQ(perform(Verb::enable, "tool.mediaControl"), "done");
    EXPECT_TRUE(store->isEnabled("tool.mediaControl"));
    EXPECT_EQ(perform(Verb::uninstall, "tool.mediaControl"), "done");
    for (const Verb verb : {Verb::enable, Verb::disable, Verb::uninstall}) {
        EXPECT_EQ(perform(verb, "tool.mediaControl"), "'tool.mediaControl' is not installed");
    }
}

TEST_F(Commands, KnowWhichToolsThereAre) {
    for (const Verb verb : {Verb::enable, Verb::disable, Verb::uninstall, Verb::install}) {
        EXPECT_EQ(perform(verb, "tool.none"), "there is no tool 'tool.none'");
    }
    desktop.urls.answer(catalogUrl, 200, "[]");
    store->refreshCatalog();
    advance(0);
    EXPECT_EQ(perform(Verb::install, "tool.mediaControl"), std::nullopt) << "it asks once more";
    advance(0);
    EXPECT_EQ(outcome, "the catalog does not offer 'tool.mediaControl'");
}

TEST_F(Commands, AnInstallIsDoneWhenItHasEnded) {
    auto catalog = builtInCatalog();
    catalog[1].downloadURL = "http://localhost/p";
    desktop.urls.answer(catalogUrl, 200, encodeCatalog(catalog));
    desktop.urls.answer("http://localhost/p", 200, "p", 1);
    store->refreshCatalog();
    advance(0);
    EXPECT_EQ(perform(Verb::install, "tool.mediaControl"), std::nullopt);
    commands->perform({Verb::install, "tool.volumeControl"}, [](const auto&) {});
    advance(0.5);
    EXPECT_EQ(outcome, std::nullopt);
    std::optional<std::string> second;
    commands->perform({Verb::install, "tool.mediaControl"},
                      [&](const auto& result) { second = result.value_or("done"); });
    advance(1);
    EXPECT_EQ(outcome, "done");
    EXPECT_EQ(second, "done") << "the same install";
    EXPECT_TRUE(record("tool.mediaControl")->isDownloaded);

    desktop.files.entries.erase(file("tool.mediaControl"));
    desktop.files.put(file("tool.mediaControl"), {SimulatedFileManager::Kind::link, "/"});
    perform(Verb::install, "tool.mediaControl");
    advance(0);
    ASSERT_TRUE(outcome);
    EXPECT_NE(outcome, "done");
}

TEST_F(Commands, SayWhatThereIs) {
    store->uninstall("tool.scrollReverse");
    store->setEnabled("tool.volumeControl", false);
    const auto state = status();
    EXPECT_EQ(state["busy"], false);
    ASSERT_EQ(state["tools"].size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(state["tools"][i]["id"], builtInCatalog()[i].id);
    }
    EXPECT_EQ(state["tools"][3].dump(),
              R"({"id":"tool.volumeControl","name":"Volume+",)"
              R"("subtitle":"Edge scroll controls system volume","installed":true,)"
              R"("enabled":false,"installing":false,"version":"1.0.0",)"
              R"("installedAt":"1970-01-01T00:00:00Z","downloaded":false})");
    EXPECT_EQ(state["tools"][5].dump(),
              R"({"id":"tool.scrollReverse","name":"Scroll+",)"
              R"("subtitle":"Flip scroll direction for trackpad and mouse independently",)"
              R"("installed":false,"enabled":false,"installing":false})");
}

TEST_F(Commands, ListInstalledToolsThatTheCatalogLeavesOutLast) {
    desktop.urls.answer(catalogUrl, 200,
                        encodeCatalog({{.id = "tool.new", .name = "New+", .version = "3"}}));
    store->refreshCatalog();
    advance(0);
    const auto state = status();
    ASSERT_EQ(state["tools"].size(), 7U);
    EXPECT_EQ(state["tools"][0]["id"], "tool.new");
    EXPECT_EQ(state["tools"][1]["installed"], true);
    EXPECT_NE(state["tools"][1]["subtitle"], "");
}

} // namespace
} // namespace quillon
