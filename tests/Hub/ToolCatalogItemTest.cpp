#include "Hub/ToolCatalogItem.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillon {
namespace {

ToolCatalogItem item() {
    return {.id = "tool.a",
            .name = "A+",
            .subtitle = "Does a",
            .icon = "star.fill",
            .version = "1.1.0",
            .minHubVersion = "1.0.0"};
}

constexpr const char* plainDocument =
    R"([{"id":"tool.a","name":"A+","subtitle":"Does a","icon":"star.fill",)"
    R"("version":"1.1.0","minHubVersion":"1.0.0"}])";

TEST(ToolCatalogItem, LeavesOutWhatItDoesNotHave) {
    EXPECT_EQ(encodeCatalog({item()}), plainDocument);
    auto whole = item();
    whole.downloadURL = "https://example.org/a";
    whole.sha256 = "00ff";
    EXPECT_EQ(encodeCatalog({whole}),
              R"([{"id":"tool.a","name":"A+","subtitle":"Does a","icon":"star.fill",)"
              R"("version":"1.1.0","minHubVersion":"1.0.0",)"
              R"("downloadURL":"https://example.org/a","sha256":"00ff"}])");
    EXPECT_EQ(decodeCatalog(encodeCatalog({item(), whole})), (ToolCatalog{item(), whole}));
}

TEST(ToolCatalogItem, NullIsAsGoodAsAbsent) {
    std::string document = plainDocument;
    document.insert(document.size() - 2, R"(,"downloadURL":null,"sha256":null)");
    EXPECT_EQ(decodeCatalog(document), ToolCatalog{item()});
}

TEST(ToolCatalogItem, OptionalFieldsAreTextsWhereTheyAreThere) {
    for (const char* field : {R"(,"sha256":1)", R"(,"downloadURL":{})", R"(,"sha256":false)"}) {
        std::string document = plainDocument;
        document.insert(document.size() - 2, field);
        EXPECT_FALSE(decodeCatalog(document)) << field;
    }
}

TEST(ToolCatalogItem, RequiredFieldsAreRequired) {
    for (const char* name : {"id", "name", "subtitle", "icon", "version", "minHubVersion"}) {
        std::string missing = plainDocument;
        missing.replace(missing.find('"' + std::string(name) + '"') + 1, 1, "X");
        EXPECT_FALSE(decodeCatalog(missing)) << name;
    }
    EXPECT_FALSE(decodeCatalog("[{}]"));
    EXPECT_FALSE(decodeCatalog("{}"));
    EXPECT_EQ(decodeCatalog("[]"), ToolCatalog());
}

TEST(BuiltInCatalog, HasTheSixToolsInTheOrderOfTheHub) {
    struct Row {
        const char* id;
        const char* name;
        const char* subtitle;
        const char* icon;
    };
    const std::vector<Row> rows{
        {"tool.windowSwitcher", "Window+", "Scroll near edges to cycle windows",
         "square.and.pencil"},
        {"tool.mediaControl", "Media+", "Edge click gestures for media keys",
         "slider.horizontal.3"},
        {"tool.desktopSwitcher", "Desktop+", "Scroll near edges to switch desktops", "star.fill"},
        {"tool.volumeControl", "Volume+", "Edge scroll controls system volume",
         "speaker.wave.2.fill"},
        {"tool.trackpadMiddleClick", "Trackpad+", "3-finger press maps to middle click",
         "bolt.fill"},
        {"tool.scrollReverse", "Scroll+",
         "Flip scroll direction for trackpad and mouse independently", "arrow.up.arrow.down"},
    };
    const auto& catalog = builtInCatalog();
    ASSERT_EQ(catalog.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(catalog[i], (ToolCatalogItem{.id = rows[i].id,
                                               .name = rows[i].name,
                                               .subtitle = rows[i].subtitle,
                                               .icon = rows[i].icon,
                                               .version = "1.0.0",
                                               .minHubVersion = "1.0.0"}));
    }
}

} // namespace
} // namespace quillon
