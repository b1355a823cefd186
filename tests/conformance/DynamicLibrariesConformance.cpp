#include "Conformance.h"
#include "Platform/TouchLibrary.h"

namespace quillon {
namespace {

class DynamicLibrariesConformance : public Conformance {};

TEST_F(DynamicLibrariesConformance, TheTouchLibraryHasItsSymbolsAndNoOthers) {
    const auto library = platform().libraries.open(touchLibraryPath);
    ASSERT_TRUE(library);
    for (const char* symbol :
         {"MTDeviceCreateDefault", "MTRegisterContactFrameCallback",
          "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop"}) {
        EXPECT_NE(library->resolve(symbol), nullptr) << symbol;
    }
    EXPECT_EQ(library->resolve("MTDeviceStop"), library->resolve("MTDeviceStop"));
    EXPECT_EQ(library->resolve("quillonNothing"), nullptr);
}

TEST_F(DynamicLibrariesConformance, ItMayBeOpenedAgainAndClosedApart) {
    auto first = platform().libraries.open(touchLibraryPath);
    const auto second = platform().libraries.open(touchLibraryPath);
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    first.reset();
    EXPECT_NE(second->resolve("MTDeviceStart"), nullptr);
}

TEST_F(DynamicLibrariesConformance, WhatIsNoLibraryIsNotOpened) {
    EXPECT_EQ(platform().libraries.open("/nowhere/library"), nullptr);
    EXPECT_EQ(platform().libraries.open(world->folder().string()), nullptr);
}

} // namespace
} // namespace quillon
