#include "Platform/MacOS/MacUserDefaults.h"

#include "fakes/FakeDefaults.h"
#include "fakes/Foundation.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

using fakes::arrayOf;
using fakes::fakeDefaults;

struct Lines final : Diagnostics {
    void line(std::string_view text) override { lines.emplace_back(text); }
    std::vector<std::string> lines;
};

class UserDefaultsTest : public testing::Test {
  protected:
    UserDefaultsTest() { fakeDefaults().reset(); }

    static void store(const std::string& key, id object) {
        fakeDefaults().setObject("", key, (void*)object);
    }
    static id stored(const std::string& key, const std::string& store = "") {
        return (id)fakeDefaults().object(store, key);
    }

    Lines diagnostics;
    MacUserDefaultsStores stores{diagnostics};
    UserDefaults& standard = stores.standard();
};

TEST_F(UserDefaultsTest, ReadsObjectsByTheirTypes) {
    store("yes", [NSNumber numberWithBool:YES]);
    store("no", [NSNumber numberWithBool:NO]);
    store("one", [NSNumber numberWithInteger:1]);
    store("zero", [NSNumber numberWithInteger:0]);
    store("half", [NSNumber numberWithDouble:0.5]);
    store("text", @"Größe");
    store("list", arrayOf({@"a", @"b"}));
    store("empty", [NSArray array]);
    EXPECT_EQ(standard.object("yes"), DefaultsObject(true));
    EXPECT_EQ(standard.object("no"), DefaultsObject(false));
    EXPECT_EQ(standard.object("one"), DefaultsObject(1.0)) << "a number, not a yes";
    EXPECT_EQ(standard.object("zero"), DefaultsObject(0.0));
    EXPECT_EQ(standard.object("half"), DefaultsObject(0.5));
    EXPECT_EQ(standard.object("text"), DefaultsObject(std::string("Größe")));
    EXPECT_EQ(standard.object("list"), DefaultsObject(StringList{"a", "b"}));
    EXPECT_EQ(standard.object("empty"), DefaultsObject(StringList{}));
    EXPECT_EQ(standard.object("nothing"), std::nullopt);
    EXPECT_EQ(standard.object("\xff"), std::nullopt) << "no key";
}

TEST_F(UserDefaultsTest, WhatNoSettingHasTheTypeOfIsDescribed) {
    NSDictionary* dictionary = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    NSArray* mixed = arrayOf({@"a", [NSNumber numberWithInteger:1]});
    store("dictionary", dictionary);
    store("mixed", mixed);
    EXPECT_EQ(standard.object("dictionary"),
              DefaultsObject(UnsupportedObject{fakes::utf8([dictionary description])}));
    EXPECT_EQ(standard.object("mixed"),
              DefaultsObject(UnsupportedObject{fakes::utf8([mixed description])}));
}

TEST_F(UserDefaultsTest, WritesObjectsOfTheSystemsTypes) {
    standard.set("bool", true);
    standard.set("number", 6.0);
    standard.set("text", std::string("Größe"));
    standard.set("list", StringList{"a", "b"});
    EXPECT_EQ(stored("bool"), [NSNumber numberWithBool:YES]);
    EXPECT_TRUE([stored("number") isEqual:[NSNumber numberWithDouble:6.0]]);
    EXPECT_TRUE([stored("text") isEqual:@"Größe"]);
    EXPECT_TRUE([stored("list") isEqual:arrayOf({@"a", @"b"})]);
    standard.remove("text");
    EXPECT_EQ(stored("text"), nil);
    EXPECT_EQ(diagnostics.lines.size(), 0U);
}

TEST_F(UserDefaultsTest, WhatCannotBeStoredIsRefusedWithALine) {
    standard.set("kept", 1.0);
    standard.set("kept", std::numeric_limits<double>::quiet_NaN());
    standard.set("kept", std::string("\xff"));
    standard.set("kept", StringList{"a", "\xff"});
    standard.set("kept", UnsupportedObject{"a date"});
    EXPECT_EQ(standard.object("kept"), DefaultsObject(1.0));
    EXPECT_EQ(diagnostics.lines,
              std::vector<std::string>(4, "⚠️ Setting kept cannot be stored"));
}

TEST_F(UserDefaultsTest, ASuiteIsAStoreOfItsOwnAndOpenedOnce) {
    UserDefaults* shared = stores.suite("com.pelorin.shared");
    ASSERT_NE(shared, nullptr);
    shared->set("key", true);
    EXPECT_EQ(stored("key", "com.pelorin.shared"), [NSNumber numberWithBool:YES]);
    EXPECT_EQ(standard.object("key"), std::nullopt);
    EXPECT_EQ(stores.suite("com.pelorin.shared"), shared);
    EXPECT_EQ(fakeDefaults().suitesMade, 1);
}

TEST_F(UserDefaultsTest, ASuiteThatCannotBeOpenedIsNull) {
    fakeDefaults().refusedSuites = {"com.pelorin.shared"};
    EXPECT_EQ(stores.suite("com.pelorin.shared"), nullptr);
    EXPECT_EQ(stores.suite("\xff"), nullptr);
}

} // namespace
} // namespace quillon
