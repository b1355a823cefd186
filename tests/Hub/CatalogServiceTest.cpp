#include "Hub/CatalogService.h"

#include "support/HubBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

class Catalogs : public testing::Test, public HubBench {
  protected:
    /// What a fetch brings, if it brings anything within this time.
    std::optional<ToolCatalog> fetch(double seconds = 0) {
        std::optional<ToolCatalog> fetched;
        service.fetchCatalog([&fetched](ToolCatalog catalog) { fetched = std::move(catalog); });
        EXPECT_FALSE(fetched) << "after the call has returned";
        advance(seconds);
        return fetched;
    }

    [[nodiscard]] std::string asked() const { return desktop.urls.requests().back().url; }

    CatalogService service{services, desktop.runLoop.makeSerialQueue("test")};
};

const ToolCatalog one{{.id = "tool.a",
                       .name = "A+",
                       .subtitle = "Does a",
                       .icon = "star.fill",
                       .version = "2",
                       .minHubVersion = "1",
                       .downloadURL = "http://localhost/a"}};

TEST_F(Catalogs, WithoutAServerTheBuiltInOne) {
    EXPECT_EQ(fetch(), builtInCatalog());
    EXPECT_EQ(asked(), catalogUrl);
    EXPECT_TRUE(lines.empty());
}

TEST_F(Catalogs, WhatTheServerSays) {
    desktop.urls.answer(catalogUrl, 200, encodeCatalog(one));
    EXPECT_EQ(fetch(), one);
    desktop.urls.answer(catalogUrl, 299, encodeCatalog(one));
    EXPECT_EQ(fetch(), one);
    desktop.urls.answer(catalogUrl, 200, "[]");
    EXPECT_EQ(fetch(), ToolCatalog()) << "an empty catalog is one";
}

TEST_F(Catalogs, AnythingElseIsTheBuiltInOne) {
    const std::string good = encodeCatalog(one);
    for (const int status : {100, 199, 300, 301, 304, 404, 500}) {
        desktop.urls.answer(catalogUrl, status, good);
        EXPECT_EQ(fetch(), builtInCatalog()) << status;
    }
    for (const char* body : {"", "{}", "[{}]", "<html>", "[", "null"}) {
        desktop.urls.answer(catalogUrl, 200, body);
        EXPECT_EQ(fetch(), builtInCatalog()) << body;
    }
    desktop.urls.answer(catalogUrl, 200, good.substr(0, good.find(",\"minHubVersion\"")) + "}]");
    EXPECT_EQ(fetch(), builtInCatalog());
    desktop.urls.answer(catalogUrl, 200, std::string(CatalogService::largestCatalog + 1, ' '));
    EXPECT_EQ(fetch(), builtInCatalog());
    EXPECT_TRUE(lines.empty()) << lines.front();
}

TEST_F(Catalogs, TheConfigurationNamesTheServer) {
    const std::vector<std::pair<std::string, std::string>> addresses{
        {"https://example.org", "https://example.org/tools/catalog"},
        {"https://example.org/", "https://example.org/tools/catalog"},
        {"https://example.org/hub", "https://example.org/hub/tools/catalog"},
        {"https://example.org/a%20b/?x=1", "https://example.org/a%20b/tools/catalog?x=1"},
        {"http://[::1]:80", "http://[::1]:80/tools/catalog"},
    };
    for (const auto& [base, address] : addresses) {
        desktop.bundle.info["HubCatalogBaseURL"] = base;
        fetch();
        EXPECT_EQ(asked(), address);
    }
}

TEST_F(Catalogs, WhatIsNoAddressIsNotAsked) {
    for (const char* base : {"", "http://exa mple.org", "http://[", "http://a:b:c"}) {
        desktop.bundle.info["HubCatalogBaseURL"] = base;
        EXPECT_EQ(fetch(), builtInCatalog());
    }
    EXPECT_TRUE(desktop.urls.requests().empty());
}

TEST_F(Catalogs, TheConfigurationSetsTheLimits) {
    fetch();
    EXPECT_EQ(desktop.urls.requests().back().largestBody, CatalogService::largestCatalog);
    EXPECT_EQ(desktop.urls.requests().back().patience, 60);
    desktop.bundle.info["HubRequestTimeout"] = "2.5";
    desktop.bundle.info["HubLargestDownload"] = "1000";
    fetch();
    EXPECT_EQ(desktop.urls.requests().back().largestBody, 1000U);
    EXPECT_EQ(desktop.urls.requests().back().patience, 2.5);
    for (const char* nonsense : {"", "-1", "0", "1x", "nan", "many"}) {
        desktop.bundle.info["HubRequestTimeout"] = nonsense;
        desktop.bundle.info["HubLargestDownload"] = nonsense;
        fetch();
        EXPECT_EQ(desktop.urls.requests().back().largestBody, CatalogService::largestCatalog);
        EXPECT_EQ(desktop.urls.requests().back().patience, 60) << nonsense;
    }
}

TEST_F(Catalogs, OnlyTheLatestFetchIsAnswered) {
    desktop.urls.answer(catalogUrl, 200, "[]", 1);
    int answers = 0;
    service.fetchCatalog([&](const ToolCatalog&) { answers += 100; });
    service.fetchCatalog([&](const ToolCatalog&) { ++answers; });
    EXPECT_EQ(desktop.urls.underWay(), 1);
    advance(5);
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(desktop.urls.underWay(), 0);
}

TEST_F(Catalogs, GoneBeforeItsAnswerItTellsNobody) {
    desktop.urls.answer(catalogUrl, 200, "[]", 1);
    bool told = false;
    {
        CatalogService shortLived(services, desktop.runLoop.makeSerialQueue("test"));
        shortLived.fetchCatalog([&](const ToolCatalog&) { told = true; });
        advance(0.5);
    }
    EXPECT_EQ(desktop.urls.underWay(), 0);
    advance(5);
    EXPECT_FALSE(told);
}

} // namespace
} // namespace quillon
