#include "Tools/Pointer/ThreeFingerTouchMonitor.h"

#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace quillon {
namespace {

struct ThreeFingerTouchMonitorTest : testing::Test {
    SimulatedDesktop desktop;
    SimulatedTouchLibrary& library = desktop.touchLibrary;
    std::shared_ptr<ThreeFingerTouchMonitor> monitor =
        std::make_shared<ThreeFingerTouchMonitor>(desktop.runLoop, library);
};

TEST_F(ThreeFingerTouchMonitorTest, CountsTheContactsOfTheLastFrame) {
    monitor->start();
    EXPECT_TRUE(monitor->isStarted());
    EXPECT_EQ(monitor->currentContactCount(), 0);
    for (const int contacts : {1, 3, 5, 0}) {
        library.touch(contacts);
        EXPECT_EQ(monitor->currentContactCount(), contacts);
        EXPECT_EQ(monitor->hasLatched(), contacts == 3);
    }
}

TEST_F(ThreeFingerTouchMonitorTest, OpensTheLibraryOfTheSystem) {
    EXPECT_STREQ(touchLibraryPath, "/System/Library/PrivateFrameworks/MultitouchSupport.framework/"
                                   "MultitouchSupport");
}

TEST_F(ThreeFingerTouchMonitorTest, NoLibrary) {
    library.isInstalled = false;
    EXPECT_FALSE(monitor->load());
    monitor->start();
    EXPECT_FALSE(monitor->isStarted());
    EXPECT_EQ(monitor->currentContactCount(), 0);
    monitor->stop();
}

TEST_F(ThreeFingerTouchMonitorTest, NoDevice) {
    library.hasDevice = false;
    monitor->start();
    EXPECT_FALSE(monitor->isStarted());
    library.hasDevice = true;
    monitor->start();
    EXPECT_TRUE(monitor->isStarted());
    EXPECT_EQ(library.timesOpened(), 1) << "it was open already";
}

using namespace std::string_literals;

struct MissingEntryPoint : testing::TestWithParam<std::pair<std::string, bool>> {
    SimulatedDesktop desktop;
};

// A library that lacks something is not used at once; one that is open by then is, as long as what
// starts it is there.
TEST_P(MissingEntryPoint, LeavesTheMonitorUnstarted) {
    const auto& [symbol, startsLater] = GetParam();
    desktop.touchLibrary.missingSymbols.insert(symbol);
    const auto monitor =
        std::make_shared<ThreeFingerTouchMonitor>(desktop.runLoop, desktop.touchLibrary);
    monitor->start();
    EXPECT_FALSE(monitor->isStarted());
    monitor->start();
    EXPECT_EQ(monitor->isStarted(), startsLater);
    monitor->stop();
    EXPECT_FALSE(monitor->isStarted());
    EXPECT_EQ(desktop.touchLibrary.timesClosed(), 0)
        << "what cannot be stopped must not be unloaded";
}

INSTANTIATE_TEST_SUITE_P(ThreeFingerTouchMonitor, MissingEntryPoint,
                         testing::Values(std::pair{"MTDeviceCreateDefault"s, false},
                                         std::pair{"MTRegisterContactFrameCallback"s, false},
                                         std::pair{"MTUnregisterContactFrameCallback"s, true},
                                         std::pair{"MTDeviceStart"s, false},
                                         std::pair{"MTDeviceStop"s, true}));

TEST_F(ThreeFingerTouchMonitorTest, LoadIsDoneOnce) {
    EXPECT_TRUE(monitor->load());
    EXPECT_TRUE(monitor->load());
    EXPECT_EQ(library.timesOpened(), 1);
}

TEST_F(ThreeFingerTouchMonitorTest, StartingTwiceIsStartingOnce) {
    monitor->start();
    monitor->start();
    EXPECT_EQ(library.timesOpened(), 1);
    EXPECT_TRUE(library.isStarted());
}

TEST_F(ThreeFingerTouchMonitorTest, EachStartLoadsTheLibraryAnew) {
    monitor->start();
    monitor->stop();
    EXPECT_FALSE(library.isStarted());
    EXPECT_EQ(library.timesClosed(), 1);
    monitor->start();
    EXPECT_EQ(library.timesOpened(), 2);
    library.touch(3);
    EXPECT_EQ(monitor->currentContactCount(), 3);
}

TEST_F(ThreeFingerTouchMonitorTest, StoppingTakesBackTheCallbackThatWasRegistered) {
    monitor->start();
    EXPECT_NE(library.callback(), nullptr);
    monitor->stop();
    EXPECT_EQ(library.callback(), nullptr) << "the library keeps what it was not given back";
}

TEST_F(ThreeFingerTouchMonitorTest, StartsTheDeviceInTheOnlyModeThatThereIs) {
    monitor->start();
    EXPECT_TRUE(library.isStarted()) << "the library refuses any mode but 0";
}

TEST_F(ThreeFingerTouchMonitorTest, ItsQueueBearsItsName) {
    EXPECT_EQ(desktop.runLoop.queueLabels(), std::vector<std::string>{"threefinger.touch.state"});
}

TEST_F(ThreeFingerTouchMonitorTest, StoppedItHearsNothing) {
    monitor->start();
    library.touch(3);
    const ContactFrameCallback late = library.callback();
    monitor->stop();
    EXPECT_FALSE(monitor->hasLatched());
    late(&library, nullptr, 3, 0, 2);
    EXPECT_FALSE(monitor->hasLatched()) << "a frame that was on its way";
    library.touch(0);
    monitor->start();
    EXPECT_EQ(monitor->currentContactCount(), 0) << "nobody has touched it since";
}

TEST_F(ThreeFingerTouchMonitorTest, FingersThatRestAtTheStartCount) {
    library.touch(3);
    monitor->start();
    EXPECT_EQ(monitor->currentContactCount(), 3);
}

TEST_F(ThreeFingerTouchMonitorTest, TellsWhenContactsBecomeAndCeaseToBeThree) {
    std::vector<bool> heard;
    monitor->setThreeContactsHandler([&](bool three) { heard.push_back(three); });
    monitor->start();
    for (const int contacts : {1, 2, 3, 3, 4, 3, 0}) {
        library.touch(contacts);
        desktop.runLoop.drain();
    }
    EXPECT_EQ(heard, (std::vector{true, false, true, false}));
}

TEST_F(ThreeFingerTouchMonitorTest, MonitorThatIsGoneIsNotCalled) {
    monitor->start();
    ContactFrameCallback late = nullptr;
    library.touch(1);
    late = library.callback();
    ASSERT_NE(late, nullptr);
    monitor.reset();
    EXPECT_FALSE(library.isStarted());
    EXPECT_EQ(late(nullptr, nullptr, 3, 0, 9), 0);
}

} // namespace
} // namespace quillon
