#include "Platform/MacOS/MacDynamicLibraries.h"

#include "Platform/TouchLibrary.h"

#include "ServicesTest.h"

namespace quillon {
namespace {

using fakes::fakeLibraries;
using MacDynamicLibrariesTest = ServicesTest;

TEST_F(MacDynamicLibrariesTest, OpensTheTouchFrameworkBindingAllAtOnce) {
    fakeLibraries().files[touchLibraryPath] = "libm.so.6";
    const auto library = MacDynamicLibraries().open(touchLibraryPath);
    ASSERT_TRUE(library);
    ASSERT_EQ(fakeLibraries().openings.size(), 1U);
    EXPECT_EQ(fakeLibraries().openings[0].path,
              "/System/Library/PrivateFrameworks/MultitouchSupport.framework/MultitouchSupport");
    EXPECT_EQ(fakeLibraries().openings[0].mode, 2);
}

TEST_F(MacDynamicLibrariesTest, ResolvesWhatIsExported) {
    const auto library = MacDynamicLibraries().open("libm.so.6");
    ASSERT_TRUE(library);
    const auto power = reinterpret_cast<double (*)(double, double)>(library->resolve("pow"));
    ASSERT_NE(power, nullptr);
    EXPECT_EQ(power(2, 5), 32);
    EXPECT_EQ(library->resolve("MTDeviceCreateDefault"), nullptr);
}

TEST_F(MacDynamicLibrariesTest, LettingGoClosesItOnce) {
    auto library = MacDynamicLibraries().open("libm.so.6");
    ASSERT_TRUE(library);
    EXPECT_TRUE(fakeLibraries().closed.empty());
    library.reset();
    EXPECT_EQ(fakeLibraries().closed, std::vector{fakeLibraries().openings.at(0).handle});
}

TEST_F(MacDynamicLibrariesTest, MissingLibraryIsNone) {
    EXPECT_FALSE(MacDynamicLibraries().open(touchLibraryPath));
    EXPECT_EQ(fakeLibraries().openings.size(), 1U);
    EXPECT_TRUE(fakeLibraries().closed.empty());
}

} // namespace
} // namespace quillon
