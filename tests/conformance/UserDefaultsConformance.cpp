#include "Conformance.h"

namespace quillon {
namespace {

class UserDefaultsConformance : public Conformance {
  protected:
    [[nodiscard]] UserDefaults& standard() const { return platform().userDefaults.standard(); }
};

const std::vector<std::pair<std::string, DefaultsObject>> objects{
    {"yes", true},
    {"no", false},
    {"zero", 0.0},
    {"one", 1.0},
    {"fraction", -0.125},
    {"large", 1e15},
    {"text", std::string("Grüße \"quoted\" \\ and\nlines")},
    {"empty", std::string()},
    {"list", StringList{"a", "", "b"}},
    {"none", StringList{}},
    {"key with a blank and . dots", std::string("x")},
};

TEST_F(UserDefaultsConformance, ObjectsKeepTheirTypeAndValue) {
    for (const auto& [key, object] : objects) {
        EXPECT_EQ(standard().object(key), std::nullopt) << key;
        standard().set(key, object);
        EXPECT_EQ(standard().object(key), object) << key;
    }
    for (const auto& [key, object] : objects) {
        EXPECT_EQ(standard().object(key), object) << key << ", once all are there";
    }
}

TEST_F(UserDefaultsConformance, TheLatestObjectReplacesOneOfAnotherType) {
    standard().set("key", true);
    standard().set("key", 1.0);
    EXPECT_EQ(standard().object("key"), DefaultsObject(1.0));
    standard().set("key", StringList{"a"});
    EXPECT_EQ(standard().object("key"), DefaultsObject(StringList{"a"}));
    standard().set("key", false);
    EXPECT_EQ(standard().object("key"), DefaultsObject(false));
}

TEST_F(UserDefaultsConformance, WhatIsRemovedIsAbsent) {
    standard().set("key", 1.0);
    standard().set("other", 2.0);
    standard().remove("key");
    standard().remove("never there");
    EXPECT_EQ(standard().object("key"), std::nullopt);
    EXPECT_EQ(standard().object("other"), DefaultsObject(2.0));
}

TEST_F(UserDefaultsConformance, SuitesAreApart) {
    UserDefaultsStores& stores = platform().userDefaults;
    UserDefaults* first = stores.suite("com.example.first");
    UserDefaults* second = stores.suite("com.example.second");
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    standard().set("key", 0.0);
    first->set("key", 1.0);
    second->set("key", 2.0);
    EXPECT_EQ(standard().object("key"), DefaultsObject(0.0));
    EXPECT_EQ(first->object("key"), DefaultsObject(1.0));
    EXPECT_EQ(second->object("key"), DefaultsObject(2.0));
    first->remove("key");
    EXPECT_EQ(first->object("key"), std::nullopt);
    EXPECT_EQ(second->object("key"), DefaultsObject(2.0));
    UserDefaults* again = stores.suite("com.example.second");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->object("key"), DefaultsObject(2.0));
}

TEST_F(UserDefaultsConformance, AllIsKeptAfterARestart) {
    QUILLON_REQUIRE_ACT(Act::restart);
    for (const auto& [key, object] : objects) {
        standard().set(key, object);
    }
    standard().set("gone", 1.0);
    standard().remove("gone");
    UserDefaults* suite = platform().userDefaults.suite("com.example.suite");
    ASSERT_NE(suite, nullptr);
    suite->set("key", std::string("of the suite"));

    UserDefaultsStores& restarted = world->restartedDefaults();
    for (const auto& [key, object] : objects) {
        EXPECT_EQ(restarted.standard().object(key), object) << key;
    }
    EXPECT_EQ(restarted.standard().object("gone"), std::nullopt);
    UserDefaults* suiteAgain = restarted.suite("com.example.suite");
    ASSERT_NE(suiteAgain, nullptr);
    EXPECT_EQ(suiteAgain->object("key"), DefaultsObject(std::string("of the suite")));
    EXPECT_EQ(suiteAgain->object("yes"), std::nullopt);
}

} // namespace
} // namespace quillon
