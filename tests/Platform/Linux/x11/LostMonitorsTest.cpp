// Monitors that the server takes away.
#include "MonitorBench.h"

#include <filesystem>
#include <set>
#include <string>
#include <system_error>

#include <sys/socket.h>

namespace quillon {
namespace {

struct LostMonitorsTest : MonitorBench {
    int lost = 0;

    /// The descriptors of this process that are connections.
    [[nodiscard]] static std::set<int> connections() {
        std::set<int> found;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code gone; // that which reads the folder
            const auto target = std::filesystem::read_symlink(entry.path(), gone);
            if (!gone && target.string().starts_with("socket:")) {
                found.insert(std::stoi(entry.path().filename()));
            }
        }
        return found;
    }

    /// Ends those that were made since, as the server does with a client that it throws out.
    static void endConnectionsBut(const std::set<int>& those) {
        for (const int descriptor : connections()) {
            if (!those.contains(descriptor)) {
                EXPECT_EQ(shutdown(descriptor, SHUT_RDWR), 0);
            }
        }
    }

    EventMonitorRef countedMonitor() {
        auto made = monitor();
        if (made) {
            monitors.setInvalidationHandler(*made, [this] { ++lost; });
        }
        return made;
    }
};

TEST_F(LostMonitorsTest, TheOwnerIsToldAndMayAddAnother) {
    const auto before = connections();
    const auto first = countedMonitor();
    const auto second = countedMonitor();
    ASSERT_TRUE(first && second);
    endConnectionsBut(before);
    EXPECT_TRUE(waitUntil([this] { return lost == 2; }));
    EXPECT_TRUE(settle());
    EXPECT_EQ(lost, 2) << "each once";
    const auto anew = countedMonitor();
    ASSERT_TRUE(anew);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick) << "and what was lost hears nothing";
    EXPECT_EQ(lost, 2);
}

TEST_F(LostMonitorsTest, WhoeverAddsOneMeanwhileIsNotToldFromWithin) {
    const auto before = connections();
    const auto held = countedMonitor();
    endConnectionsBut(before);
    const auto anew = countedMonitor();
    EXPECT_TRUE(anew);
    EXPECT_EQ(lost, 0) << "not before the event loop runs";
    EXPECT_TRUE(waitUntil([this] { return lost == 1; }));
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
    EXPECT_EQ(lost, 1);
}

TEST_F(LostMonitorsTest, TheHandlerMayReplaceIt) {
    const auto before = connections();
    auto held = monitor();
    auto other = monitor();
    monitors.setInvalidationHandler(*held, [&] {
        ++lost;
        other.reset();
        held.reset();
        held = monitor();
    });
    monitors.setInvalidationHandler(*other, [&] { ++lost; });
    endConnectionsBut(before);
    EXPECT_TRUE(waitUntil([this] { return lost == 1; }));
    EXPECT_TRUE(held);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
    EXPECT_EQ(lost, 1) << "the other was let go of before its turn";
}

TEST_F(LostMonitorsTest, LostInTheMidstOfAnEvent) {
    const auto before = connections();
    EventMonitorRef anew;
    const auto held = monitors.addGlobalMonitor(eventMask(EventType::leftMouseDown),
                                                [&](const MonitoredEvent&) {
                                                    endConnectionsBut(before);
                                                    anew = monitor();
                                                },
                                                {});
    monitors.setInvalidationHandler(*held, [this] { ++lost; });
    click(1);
    EXPECT_TRUE(waitUntil([this] { return lost == 1; }));
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
}

TEST_F(LostMonitorsTest, TheServerEnds) {
    auto held = countedMonitor();
    server.kill();
    EXPECT_TRUE(waitUntil([this] { return lost == 1; }));
    EXPECT_EQ(monitor(), nullptr);
    EXPECT_TRUE(settle());
    EXPECT_EQ(lost, 1);
}

TEST_F(LostMonitorsTest, WhoeverLetsGoOfItIsNotTold) {
    countedMonitor().reset();
    auto held = countedMonitor();
    server.kill();
    held.reset();
    EXPECT_TRUE(settle());
    EXPECT_EQ(lost, 0);
}

} // namespace
} // namespace quillon
