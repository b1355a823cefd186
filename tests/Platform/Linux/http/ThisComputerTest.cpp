#include "Platform/Linux/http/ThisComputer.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(ThisComputerTest, IsKnownByItsNamesAndAddresses) {
    for (const char* own : {"localhost", "LOCALHOST", "localhost.", "a.localhost", "127.0.0.1",
                            "127.255.0.9", "::1", "[::1]", "[::ffff:127.0.0.1]"}) {
        EXPECT_TRUE(isThisComputer(own)) << own;
    }
    for (const char* other : {"", "localhost.example.org", "notlocalhost", "128.0.0.1",
                              "127.0.0.1.x", "10.0.0.1", "::2", "[::ffff:10.0.0.1]", "127", "[]"}) {
        EXPECT_FALSE(isThisComputer(other)) << other;
    }
}

} // namespace
} // namespace quillon
