#pragma once

#include "fakes/FakeAccessibility.h"
#include "fakes/FakeAudio.h"
#include "fakes/FakeCoreFoundation.h"
#include "fakes/FakeEvents.h"
#include "fakes/FakeLibraries.h"
#include "fakes/FakeWindows.h"

#include <gtest/gtest.h>

namespace quillon {

/// Starts with a system of which nothing has been asked, and sees to it that every object that was
/// made or copied is let go of.
class ServicesTest : public testing::Test {
  protected:
    ServicesTest() {
        fakes::fakeAccessibility().reset();
        fakes::fakeAudio().reset();
        fakes::fakeCoreFoundation().reset();
        fakes::fakeEvents().reset();
        fakes::fakeLibraries().reset();
        fakes::fakeWindows().reset();
    }
    ~ServicesTest() override {
        EXPECT_EQ(fakes::FakeCoreFoundation::livingObjects(), livingBefore_);
    }

  private:
    long livingBefore_ = fakes::FakeCoreFoundation::livingObjects();
};

} // namespace quillon
