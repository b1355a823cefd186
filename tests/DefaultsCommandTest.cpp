#include "DefaultsCommand.h"

#include "Platform/Simulated/SimulatedUserDefaults.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

using Verb = DefaultsRequest::Verb;

struct DefaultsCommand : testing::Test {
    SimulatedUserDefaultsStores stores;
    bool reachesDisk = true;
    std::ostringstream out;
    std::ostringstream err;

    int run(const DefaultsRequest& request) {
        return defaultsCommand(
            request, stores, [this] { return reachesDisk; }, out, err);
    }
};

TEST_F(DefaultsCommand, WritesEveryType) {
    const std::vector<std::pair<const char*, DefaultsObject>> rows{
        {"true", true},
        {"40", 40.0},
        {"\"text\"", std::string("text")},
        {R"(["a", "b"])", StringList{"a", "b"}},
        {"[]", StringList{}},
    };
    for (const auto& [json, object] : rows) {
        EXPECT_EQ(run({Verb::write, "", "key", json}), 0) << json;
        EXPECT_EQ(stores.standard().object("key"), object) << json;
    }
}

TEST_F(DefaultsCommand, RefusesWhatNoSettingCanHold) {
    for (const char* json : {"", "text", "{}", "null", "[1]", "1e999", "1e30", "true false"}) {
        EXPECT_EQ(run({Verb::write, "", "key", json}), 2) << json;
        EXPECT_EQ(stores.standard().object("key"), std::nullopt) << json;
        EXPECT_FALSE(err.str().empty());
    }
}

TEST_F(DefaultsCommand, ReadsBackAsJson) {
    stores.standard().set("key", StringList{"a"});
    EXPECT_EQ(run({Verb::read, "", "key", ""}), 0);
    EXPECT_EQ(out.str(), "[\"a\"]\n");
    EXPECT_EQ(run({Verb::read, "", "other", ""}), 1);
}

TEST_F(DefaultsCommand, Deletes) {
    stores.standard().set("key", true);
    EXPECT_EQ(run({Verb::remove, "", "key", ""}), 0);
    EXPECT_EQ(stores.standard().object("key"), std::nullopt);
}

TEST_F(DefaultsCommand, NamedStore) {
    EXPECT_EQ(run({Verb::write, "com.shared", "key", "true"}), 0);
    EXPECT_EQ(stores.suite("com.shared")->object("key"), DefaultsObject(true));
    EXPECT_EQ(stores.standard().object("key"), std::nullopt);
    stores.refuseSuite("bad");
    EXPECT_EQ(run({Verb::write, "bad", "key", "true"}), 2);
}

TEST_F(DefaultsCommand, SaysSoWhenTheDiskRefuses) {
    reachesDisk = false;
    EXPECT_EQ(run({Verb::write, "", "key", "true"}), 1);
}

} // namespace
} // namespace quillon
