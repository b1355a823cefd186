#include "Conformance.h"

#include "Platform/FileManager.h"

namespace quillon {
namespace {

class BundleConformance : public Conformance {
  protected:
    BundleConformance()
        : Conformance(
              {.information = {{"Greeting", "Grüße"}, {"Empty", ""}}, .numberKey = "Number"}) {}
};

TEST_F(BundleConformance, ItsIdentifierNamesFolders) {
    EXPECT_EQ(platform().bundle.identifier(), "com.pelorin.PelorinApp");
    EXPECT_TRUE(isEntryName(platform().bundle.identifier()));
}

TEST_F(BundleConformance, TextsAreFoundByTheirKeys) {
    EXPECT_EQ(platform().bundle.infoString("Greeting"), "Grüße");
    EXPECT_EQ(platform().bundle.infoString("Empty"), "");
}

TEST_F(BundleConformance, WhatIsNoTextIsNothing) {
    EXPECT_EQ(platform().bundle.infoString("Number"), std::nullopt);
    EXPECT_EQ(platform().bundle.infoString("Missing"), std::nullopt);
}

} // namespace
} // namespace quillon
