#include "Conformance.h"

namespace quillon {
namespace {

class Trusted : public Conformance {};

class Untrusted : public Conformance {
  protected:
    Untrusted() : Conformance({.isTrusted = false}) {}
};

TEST_F(Trusted, IsSaidToBeSo) {
    EXPECT_TRUE(platform().accessibility.isProcessTrusted());
    EXPECT_TRUE(platform().accessibility.isProcessTrusted());
}

TEST_F(Untrusted, IsSaidToBeSo) {
    EXPECT_FALSE(platform().accessibility.isProcessTrusted());
    EXPECT_FALSE(platform().accessibility.isProcessTrusted());
}

} // namespace
} // namespace quillon
