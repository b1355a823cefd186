#include "Hub/ToolMigrationService.h"

#include "Platform/Simulated/SimulatedUserDefaults.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

class Migration : public testing::Test {
  protected:
    void migrate() { ToolMigrationService(defaults).migrate(); }
    [[nodiscard]] std::optional<DefaultsObject> hub(const std::string& id) const {
        return defaults.object("HubEnabled." + id);
    }
    [[nodiscard]] bool isDone() const {
        return defaults.object("HubMigrationV1Done") == DefaultsObject(true);
    }

    SimulatedUserDefaults defaults;
};

TEST_F(Migration, FindsNothingAndIsDone) {
    migrate();
    EXPECT_TRUE(isDone());
    EXPECT_EQ(defaults.writes(), 1);
}

TEST_F(Migration, CarriesEachFlagOverByTheToolsOldNumber) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"Tool1Enabled", "tool.windowSwitcher"},      {"Tool2Enabled", "tool.mediaControl"},
        {"Tool3Enabled", "tool.trackpadMiddleClick"}, {"Tool4Enabled", "tool.desktopSwitcher"},
        {"Tool5Enabled", "tool.volumeControl"},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        defaults.set(rows[i].first, i % 2 == 0);
    }
    defaults.set("", true);
    defaults.set("Tool6Enabled", false);
    migrate();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(hub(rows[i].second), DefaultsObject(i % 2 == 0)) << rows[i].second;
        EXPECT_EQ(defaults.object(rows[i].first), DefaultsObject(i % 2 == 0)) << "is left there";
    }
    EXPECT_FALSE(hub("tool.scrollReverse"));
    EXPECT_FALSE(hub(""));
}

TEST_F(Migration, WritesOnlyWhatThereWas) {
    defaults.set("Tool3Enabled", false);
    const int before = defaults.writes();
    migrate();
    EXPECT_EQ(hub("tool.trackpadMiddleClick"), DefaultsObject(false));
    EXPECT_TRUE(isDone());
    EXPECT_EQ(defaults.writes() - before, 2);
}

TEST_F(Migration, RunsOnce) {
    migrate();
    defaults.set("Tool2Enabled", false);
    const int before = defaults.writes();
    migrate();
    EXPECT_FALSE(hub("tool.mediaControl"));
    EXPECT_EQ(defaults.writes(), before);
}

TEST_F(Migration, IsDoneWhereSomebodySaysSo) {
    for (const DefaultsObject& done :
         {DefaultsObject(true), DefaultsObject(1.0), DefaultsObject(std::string("yes"))}) {
        defaults.set("HubMigrationV1Done", done);
        defaults.set("Tool2Enabled", false);
        migrate();
        EXPECT_FALSE(hub("tool.mediaControl"));
    }
    defaults.set("HubMigrationV1Done", false);
    migrate();
    EXPECT_EQ(hub("tool.mediaControl"), DefaultsObject(false));
}

TEST_F(Migration, TheOldValueWins) {
    defaults.set("HubEnabled.tool.volumeControl", true);
    defaults.set("Tool5Enabled", false);
    migrate();
    EXPECT_EQ(hub("tool.volumeControl"), DefaultsObject(false));
}

TEST_F(Migration, OfWhateverTypeTheOldValueIs) {
    const std::vector<std::pair<DefaultsObject, bool>> rows{
        {1.0, true},
        {0.0, false},
        {-0.5, true},
        {std::string("YES"), true},
        {std::string("true"), true},
        {std::string("t"), true},
        {std::string(" y"), true},
        {std::string("1"), true},
        {std::string("-010"), true},
        {std::string("0"), false},
        {std::string("no"), false},
        {std::string(""), false},
        {std::string("on"), false},
        {std::string("00"), false},
        {StringList{"true"}, false},
        {UnsupportedObject{"{}"}, false},
    };
    for (const auto& [object, flag] : rows) {
        EXPECT_EQ(asBool(object), flag);
    }
    defaults.set("Tool1Enabled", std::string("YES"));
    migrate();
    EXPECT_EQ(hub("tool.windowSwitcher"), DefaultsObject(true));
}

} // namespace
} // namespace quillon
