#include "Platform/Linux/session/DefaultsDocument.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace quillon {
namespace {

using Change = DefaultsDocument::Change;

DefaultsDocument parsed(std::string_view text) {
    auto result = DefaultsDocument::parse(text);
    if (const auto* damage = std::get_if<DefaultsDamage>(&result)) {
        ADD_FAILURE() << "refused: " << damage->reason;
        return {};
    }
    return std::get<DefaultsDocument>(std::move(result));
}

std::string damageOf(std::string_view text) {
    auto result = DefaultsDocument::parse(text);
    const auto* damage = std::get_if<DefaultsDamage>(&result);
    return damage == nullptr ? "accepted" : damage->reason;
}

DefaultsObject objectIn(const DefaultsDocument& document, std::string_view key) {
    const auto* object = document.object(key);
    return object == nullptr ? DefaultsObject("absent") : *object;
}

DefaultsObject objectOf(std::string_view value) {
    return objectIn(parsed("{\"key\": " + std::string(value) + "}"), "key");
}

DefaultsObject unsupported(std::string description) {
    return UnsupportedObject{std::move(description)};
}

TEST(DefaultsDocument, ReadsEachType) {
    EXPECT_EQ(objectOf("true"), DefaultsObject(true));
    EXPECT_EQ(objectOf("false"), DefaultsObject(false));
    EXPECT_EQ(objectOf("40.0"), DefaultsObject(40.0));
    EXPECT_EQ(objectOf("40"), DefaultsObject(40.0));
    EXPECT_EQ(objectOf("-7"), DefaultsObject(-7.0));
    EXPECT_EQ(objectOf("0"), DefaultsObject(0.0));
    EXPECT_EQ(objectOf("\"\""), DefaultsObject(std::string()));
    EXPECT_EQ(objectOf("\"J\\u00e9 \\ud83d\\ude00\""), DefaultsObject(std::string("Jé 😀")));
    EXPECT_EQ(objectOf("[]"), DefaultsObject(StringList{}));
    EXPECT_EQ(objectOf("[\"a\", \"\", \"b]\"]"), DefaultsObject(StringList{"a", "", "b]"}));
}

TEST(DefaultsDocument, OtherValuesAreDescribedInShort) {
    EXPECT_EQ(objectOf("null"), unsupported("null"));
    EXPECT_EQ(objectOf("{}"), unsupported("{}"));
    EXPECT_EQ(objectOf("[1 ,\n 2]"), unsupported("[1,2]"));
    EXPECT_EQ(objectOf("[\"a\", 1, \"b\"]"), unsupported("[\"a\",1,\"b\"]"));
    EXPECT_EQ(objectOf("[1, \"a\"]"), unsupported("[1,\"a\"]"));
    EXPECT_EQ(objectOf("[\"a\", null]"), unsupported("[\"a\",null]"));
    EXPECT_EQ(objectOf("[\"a\", true]"), unsupported("[\"a\",true]"));
    EXPECT_EQ(objectOf("[[\"a\"]]"), unsupported("[[\"a\"]]"));
    EXPECT_EQ(objectOf("[\"a\", [\"b\"], \"c\"]"), unsupported("[\"a\",[\"b\"],\"c\"]"));
    EXPECT_EQ(objectOf("[\"a\", {\"b\": \"c\"}]"), unsupported("[\"a\",{\"b\":\"c\"}]"));
    EXPECT_EQ(objectOf("{ \"a b\" : [\"\\\" c\"] }"), unsupported("{\"a b\":[\"\\\" c\"]}"));
}

TEST(DefaultsDocument, LongDescriptionIsCutBetweenCharacters) {
    for (int width = 40; width < 60; ++width) {
        const std::string value =
            "{\"" + std::string(static_cast<std::size_t>(width), 'x') + "éééééééééééé\": 1}";
        const auto object = objectOf(value);
        const auto& description = std::get<UnsupportedObject>(object).description;
        EXPECT_LE(description.size(), 64U);
        EXPECT_TRUE(description.ends_with("…"));
        DefaultsDocument document;
        EXPECT_EQ(document.set("key", description), Change::made) << "UTF-8: " << description;
    }
}

TEST(DefaultsDocument, NumberBeyondADoubleCostsOnlyItsOwnKey) {
    const std::string manyDigits(400, '9');
    const auto document = parsed("{\"a\": 1e999, \"b\": -1E+999, \"c\": " + manyDigits +
                                 ", \"d\": [1, 1e999], \"e\": 5, \"f\": \"1e999\"}");
    EXPECT_EQ(objectIn(document, "a"), unsupported("1e999"));
    EXPECT_EQ(objectIn(document, "b"), unsupported("-1E+999"));
    EXPECT_TRUE(std::holds_alternative<UnsupportedObject>(objectIn(document, "c")));
    EXPECT_EQ(objectIn(document, "d"), unsupported("[1,1e999]"));
    EXPECT_EQ(objectIn(document, "e"), DefaultsObject(5.0));
    EXPECT_EQ(objectIn(document, "f"), DefaultsObject(std::string("1e999")));
    EXPECT_EQ(document.serialise(),
              "{\n  \"a\": 1e999,\n  \"b\": -1E+999,\n  \"c\": " + manyDigits +
                  ",\n  \"d\": [1, 1e999],\n  \"e\": 5,\n"
                  "  \"f\": \"1e999\"\n}\n");
}

TEST(DefaultsDocument, NumberWithinATextIsText) {
    EXPECT_EQ(objectOf(R"("1e999")"), DefaultsObject(std::string("1e999")));
    EXPECT_EQ(objectOf(R"("\" 1e999")"), DefaultsObject(std::string("\" 1e999")));
    EXPECT_EQ(objectOf(R"(["\\", "1e999"])"), DefaultsObject(StringList{"\\", "1e999"}));
}

TEST(DefaultsDocument, LargestAndSmallestNumbersAreNumbers) {
    EXPECT_EQ(objectOf("1.7976931348623157e308"),
              DefaultsObject(std::numeric_limits<double>::max()));
    EXPECT_EQ(objectOf("1e-999"), DefaultsObject(0.0));
    EXPECT_EQ(objectOf("18446744073709551616"), DefaultsObject(0x1p64));
    EXPECT_EQ(objectOf("1" + std::string(308, '0')), DefaultsObject(1e308));
    EXPECT_EQ(objectOf("0." + std::string(400, '0') + "1e401"), DefaultsObject(1.0));
}

TEST(DefaultsDocument, MalformedHugeNumbersDamage) {
    for (const auto* number : {"01e999", "1.e999", "1e999e9", "1e999-5", "1e+", "+1e999", ".1e999",
                               "--1e999", "1e999.5", "-e999"}) {
        EXPECT_TRUE(damageOf("{\"a\": " + std::string(number) + "}").starts_with("is not valid"))
            << number;
    }
}

TEST(DefaultsDocument, WhatIsNotSetIsWrittenAsItWasRead) {
    auto document = parsed("{\"z\": {\"a\" : [1,\n2]}, \"big\": 12345678901234567890,"
                           " \"esc\": \"\\u0041\", \"n\": 1.50, \"x\": 40}");
    EXPECT_EQ(document.set("x", 41.0), Change::made);
    EXPECT_EQ(document.serialise(), "{\n  \"big\": 12345678901234567890,\n  \"esc\": \"\\u0041\",\n"
                                    "  \"n\": 1.50,\n  \"x\": 41.0,\n"
                                    "  \"z\": {\"a\" : [1,\n2]}\n}\n");
}

TEST(DefaultsDocument, WritesEachTypeSoThatItReadsTheSame) {
    DefaultsDocument document;
    EXPECT_TRUE(document.empty());
    document.set("bool", true);
    document.set("list", StringList{"a", "ü\n"});
    document.set("number", 40.0);
    document.set("text", std::string("quote \" and NUL \0 end", 20));
    document.set("", 0.1);
    EXPECT_EQ(document.serialise(), "{\n  \"\": 0.1,\n  \"bool\": true,\n"
                                    "  \"list\": [\"a\",\"ü\\n\"],\n  \"number\": 40.0,\n"
                                    "  \"text\": \"quote \\\" and NUL \\u0000 en\"\n}\n");
    EXPECT_EQ(parsed(document.serialise()), document);
}

TEST(DefaultsDocument, EmptyDocumentIsAnEmptyObject) {
    EXPECT_EQ(DefaultsDocument().serialise(), "{}\n");
    EXPECT_TRUE(parsed("{}\n").empty());
}

TEST(DefaultsDocument, SettingTheSameValueChangesNothing) {
    auto document = parsed("{\"x\": 40}");
    EXPECT_EQ(document.set("x", 40.0), Change::none);
    EXPECT_EQ(document.serialise(), "{\n  \"x\": 40\n}\n");
    EXPECT_EQ(document.set("x", true), Change::made);
    EXPECT_EQ(document.remove("y"), Change::none);
    EXPECT_EQ(document.remove("x"), Change::made);
    EXPECT_EQ(document.object("x"), nullptr);
}

TEST(DefaultsDocument, RefusesWhatJsonCannotHold) {
    auto document = parsed("{\"x\": 40}");
    EXPECT_EQ(document.set("x", std::numeric_limits<double>::quiet_NaN()), Change::refused);
    EXPECT_EQ(document.set("x", std::numeric_limits<double>::infinity()), Change::refused);
    EXPECT_EQ(document.set("x", -HUGE_VAL), Change::refused);
    EXPECT_EQ(document.set("x", std::string("\xff")), Change::refused);
    EXPECT_EQ(document.set("x", StringList{"a", "\xc3"}), Change::refused);
    EXPECT_EQ(document.set("x", UnsupportedObject{"null"}), Change::refused);
    EXPECT_EQ(document.set("\xff", 1.0), Change::refused);
    EXPECT_EQ(objectIn(document, "x"), DefaultsObject(40.0));
    EXPECT_EQ(document.serialise(), "{\n  \"x\": 40\n}\n");
}

TEST(DefaultsDocument, LastOfDuplicateKeysCounts) {
    const auto document = parsed("{\"a\": 1, \"b\": 2, \"a\": \"x\"}");
    EXPECT_EQ(objectIn(document, "a"), DefaultsObject(std::string("x")));
    EXPECT_EQ(document.serialise(), "{\n  \"a\": \"x\",\n  \"b\": 2\n}\n");
}

TEST(DefaultsDocument, ByteOrderMarkIsAccepted) {
    const auto document = parsed("\xEF\xBB\xBF{\"a\": {\"b\": 1}, \"c\": 2}");
    EXPECT_EQ(document.serialise(), "{\n  \"a\": {\"b\": 1},\n  \"c\": 2\n}\n");
}

TEST(DefaultsDocument, CarriageReturnsAreBlanks) {
    EXPECT_EQ(objectIn(parsed("{\r\n\t\"a\"\r\n:\r\n1\r\n}\r\n"), "a"), DefaultsObject(1.0));
}

TEST(DefaultsDocument, DeepNestingIsReadAndKept) {
    const std::size_t depth = 500000;
    const std::string nested = std::string(depth, '[') + std::string(depth, ']');
    const auto document = parsed("{\"a\": " + nested + ", \"b\": 2}");
    EXPECT_TRUE(std::holds_alternative<UnsupportedObject>(objectIn(document, "a")));
    EXPECT_EQ(objectIn(document, "b"), DefaultsObject(2.0));
    EXPECT_EQ(document.serialise(), "{\n  \"a\": " + nested + ",\n  \"b\": 2\n}\n");
}

TEST(DefaultsDocument, SaysWhatIsWrong) {
    EXPECT_EQ(damageOf(""), "is empty");
    EXPECT_EQ(damageOf(" \n"), "is empty");
    EXPECT_EQ(damageOf("[1]"), "holds no JSON object");
    EXPECT_EQ(damageOf("5 "), "holds no JSON object");
    EXPECT_EQ(damageOf("\"a\""), "holds no JSON object");
    EXPECT_EQ(damageOf("null"), "holds no JSON object");
    EXPECT_EQ(damageOf(std::string_view("{}\0{}", 5)), "contains NUL bytes");
    EXPECT_EQ(damageOf("{\"a\": tru}"),
              "is not valid JSON at line 1, column 10: syntax error while "
              "parsing value - invalid literal");
    EXPECT_EQ(damageOf("{\"a\": \"\xff\"}"),
              "is not valid JSON at line 1, column 8: syntax error while "
              "parsing value - invalid string: ill-formed UTF-8 byte");
}

TEST(DefaultsDocument, EveryTruncationDamages) {
    const std::string text = "{\"a\": [1, {\"b\": \"c\\u0041\"}], \"d\": -1.5e3, \"e\": 1e999}";
    parsed(text);
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_NE(damageOf(text.substr(0, size)), "accepted") << text.substr(0, size);
    }
}

TEST(DefaultsDocument, TextBehindTheObjectDamages) {
    EXPECT_NE(damageOf("{} {}"), "accepted");
    EXPECT_NE(damageOf("{},"), "accepted");
    EXPECT_NE(damageOf("{} // comment"), "accepted");
    EXPECT_NE(damageOf("{\"a\": \"\\ud800\"}"), "accepted");
}

TEST(DefaultsDocument, ReasonStaysShortWhateverTheText) {
    EXPECT_LT(damageOf("{\"a\": \"" + std::string(100000, 'x')).size(), 200U);
    EXPECT_LT(damageOf("{" + std::string(100000, 'x')).size(), 200U);
}

} // namespace
} // namespace quillon
