#include "Platform/Linux/x11/X11Displays.h"

#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace quillon {
namespace {

struct X11DisplaysTest : testing::Test {
    XServer server;
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    SimulatedDiagnostics diagnostics{[](std::string_view, const std::string&) {}};
    X11Displays displays;
    X11Session session{diagnostics, displays, [] {}};
    XClient client;

    void SetUp() override { ASSERT_TRUE(session.isProcessTrusted()); }

    void setResources(const char* text) const {
        xcb_change_property(client.connection().get(), XCB_PROP_MODE_REPLACE,
                            client.connection().root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(std::strlen(text)), text);
        client.connection().sync();
    }
};

TEST_F(X11DisplaysTest, PointerInPoints) {
    client.movePointer(10, 0);
    EXPECT_EQ(displays.mouseLocation(), (Point{10, 800}));
}

TEST_F(X11DisplaysTest, PointerOfTheEventWhileItIsHandled) {
    client.movePointer(10, 0);
    {
        const X11Displays::EventScope scope(displays, {1, 2});
        EXPECT_EQ(displays.mouseLocation(), (Point{1, 2}));
    }
    EXPECT_EQ(displays.mouseLocation(), (Point{10, 800}));
}

TEST_F(X11DisplaysTest, FollowsTheScale) {
    setResources("Xft.dpi:\t192\n");
    ASSERT_TRUE(waitUntil([&] { return displays.screens()[0].width == 640; }));
    client.movePointer(10, 0);
    EXPECT_EQ(displays.mouseLocation(), (Point{5, 400}));
    setResources("");
    EXPECT_TRUE(waitUntil([&] { return displays.screens()[0].width == 1280; }));
}

TEST_F(X11DisplaysTest, FollowsTheMonitorsMainOneFirst) {
    ASSERT_EQ(std::system("xrandr --setmonitor LEFT 500/100x800/200+0+0 screen"), 0);
    ASSERT_EQ(std::system("xrandr --setmonitor '*RIGHT' 780/100x700/200+500+100 none"), 0);
    // Monitors that are declared by hand are announced with the next change of the desktop only.
    setResources("Xft.dpi:\t96\n");
    ASSERT_TRUE(waitUntil([&] { return displays.screens().size() == 2; }));
    EXPECT_EQ(displays.screens()[0], (Rect{0, 0, 780, 700}));
    EXPECT_EQ(displays.screens()[1], (Rect{-500, 0, 500, 800}));
    client.movePointer(500, 799);
    EXPECT_EQ(displays.mouseLocation(), (Point{0, 1}));
}

TEST_F(X11DisplaysTest, FollowsTheSizeOfTheRoot) {
    ASSERT_EQ(std::system("xrandr --newmode small 0 1024 0 0 1024 768 0 0 768 && "
                          "xrandr --addmode screen small && xrandr --output screen --mode small"),
              0);
    EXPECT_TRUE(waitUntil([&] { return displays.screens()[0] == Rect{0, 0, 1024, 768}; }));
}

} // namespace
} // namespace quillon
