#include "Hub/InstalledToolRecord.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;
using namespace std::chrono_literals;

constexpr sys_seconds morning = sys_days(std::chrono::May / 1 / 2024) + 9h + 30min;

std::string withField(const std::string& name, const std::string& value) {
    std::string document = R"([{"id": "tool.a", "version": "1.0.0", )"
                           R"("installedAt": "2024-05-01T09:30:00Z", )"
                           R"("isEnabled": true, "isDownloaded": false}])";
    const auto start = document.find("\"" + name + "\": ") + name.size() + 4;
    const auto end = document.find_first_of(",}", start);
    return document.replace(start, end - start, value);
}

TEST(InstalledToolRecord, IsWrittenInFieldOrderPrettyPrinted) {
    EXPECT_EQ(encodeRecords({{.id = "tool.b",
                              .version = "1.2.0",
                              .installedAt = morning,
                              .isEnabled = true,
                              .isDownloaded = false},
                             {.id = "tool.a", .version = "2", .installedAt = morning + 1s}}),
              R"([
  {
    "id": "tool.b",
    "version": "1.2.0",
    "installedAt": "2024-05-01T09:30:00Z",
    "isEnabled": true,
    "isDownloaded": false
  },
  {
    "id": "tool.a",
    "version": "2",
    "installedAt": "2024-05-01T09:30:01Z",
    "isEnabled": false,
    "isDownloaded": false
  }
])");
    EXPECT_EQ(encodeRecords({}), "[]");
}

TEST(InstalledToolRecord, ComesBackAsItWasWritten) {
    const InstalledTools records{{.id = "tool.\"ä\\\n",
                                  .version = "",
                                  .installedAt = sys_seconds(0s),
                                  .isEnabled = false,
                                  .isDownloaded = true},
                                 {.id = "tool.z", .version = "1", .installedAt = morning}};
    EXPECT_EQ(decodeRecords(encodeRecords(records)), records);
    EXPECT_EQ(decodeRecords("[]"), InstalledTools());
}

TEST(InstalledToolRecord, AllFieldsAreNeeded) {
    EXPECT_TRUE(decodeRecords(withField("id", "\"tool.a\"")));
    for (const char* name : {"id", "version", "installedAt", "isEnabled", "isDownloaded"}) {
        std::string document = withField("id", "\"tool.a\"");
        document.replace(document.find(name), 1, "X");
        EXPECT_FALSE(decodeRecords(document)) << name << " is missing";
    }
}

TEST(InstalledToolRecord, FieldsHaveTheirTypes) {
    for (const char* name : {"id", "version", "installedAt"}) {
        for (const char* value : {"1", "true", "null", "[]", "{}"}) {
            EXPECT_FALSE(decodeRecords(withField(name, value))) << name << ' ' << value;
        }
    }
    for (const char* name : {"isEnabled", "isDownloaded"}) {
        for (const char* value : {"1", "\"true\"", "null", "[true]"}) {
            EXPECT_FALSE(decodeRecords(withField(name, value))) << name << ' ' << value;
        }
    }
}

TEST(InstalledToolRecord, FieldsThatAreUnknownAreIgnoredHoweverDeep) {
    const auto records =
        decodeRecords(R"([{"more": {"id": 1, "deep": [{"isEnabled": 3}]}, "id": "tool.a",
                           "version": "1", "installedAt": "2024-05-01T09:30:00Z",
                           "isEnabled": true, "isDownloaded": true, "last": null}])");
    ASSERT_TRUE(records);
    EXPECT_EQ(records->at(0).id, "tool.a");
    EXPECT_TRUE(records->at(0).isEnabled);
}

TEST(InstalledToolRecord, OneBadObjectSpoilsTheDocument) {
    const std::string good = withField("id", "\"tool.a\"");
    const std::string object = good.substr(1, good.size() - 2);
    EXPECT_EQ(decodeRecords("[" + object + "," + object + "]")->size(), 2U);
    EXPECT_FALSE(decodeRecords("[" + object + ",{}]"));
    EXPECT_FALSE(decodeRecords("[" + object + ",1]"));
    EXPECT_FALSE(decodeRecords("[" + object + "," + object + ",[]]"));
}

TEST(InstalledToolRecord, OnlyAnArrayIsADocument) {
    for (const char* document :
         {"", " ", "{}", "null", "1", "\"[]\"", "[", "[]]", "[] x", "[null]", "[[]]", "\xff",
          "[{\"id\": \"\xff\"}]", "[{]", "{\"id\": \"tool.a\"}"}) {
        EXPECT_FALSE(decodeRecords(document)) << document;
    }
}

TEST(InstalledToolRecord, DeepNestingIsRefusedCheaply) {
    EXPECT_FALSE(decodeRecords(std::string(1000000, '[')));
    std::string deep = R"([{"x": )" + std::string(1000000, '[');
    EXPECT_FALSE(decodeRecords(deep));
}

TEST(InternetDateTime, NamesAMoment) {
    EXPECT_EQ(parseInternetDateTime("2024-05-01T09:30:00Z"), morning);
    EXPECT_EQ(parseInternetDateTime("2024-05-01T11:30:00+02:00"), morning);
    EXPECT_EQ(parseInternetDateTime("2024-05-01T05:00:00-04:30"), morning);
    EXPECT_EQ(parseInternetDateTime("1969-12-31T23:59:59Z"), sys_seconds(-1s));
    EXPECT_EQ(internetDateTime(sys_seconds(-1s)), "1969-12-31T23:59:59Z");
    EXPECT_EQ(parseInternetDateTime("2024-02-29T23:59:59Z"),
              sys_days(std::chrono::March / 1 / 2024) - 1s);
}

TEST(InternetDateTime, NothingElseDoes) {
    for (const char* text : {"",
                             "2024-05-01",
                             "2024-05-01T09:30:00",
                             "2024-05-01 09:30:00Z",
                             "2024-05-01T09:30Z",
                             "2024-05-01T09:30:00.5Z",
                             "2024-05-01t09:30:00Z",
                             "2024-05-01T09:30:00z",
                             "2024-13-01T09:30:00Z",
                             "2024-00-01T09:30:00Z",
                             "2023-02-29T09:30:00Z",
                             "2024-05-01T24:00:00Z",
                             "2024-05-01T09:60:00Z",
                             "2024-05-01T09:30:60Z",
                             "2024-05-01T09:30:00Z ",
                             " 2024-05-01T09:30:00Z",
                             "24-05-01T09:30:00Z",
                             "2024-5-1T09:30:00Z",
                             "+024-05-01T09:30:00Z",
                             "2024--5-01T09:30:00Z",
                             "2024-05-01T09:30:00+0200",
                             "2024-05-01T09:30:00+24:00",
                             "2024-05-01T09:30:00+02",
                             "20240501T093000Z",
                             "1714555800"}) {
        EXPECT_FALSE(parseInternetDateTime(text)) << text;
    }
}

} // namespace
} // namespace quillon
