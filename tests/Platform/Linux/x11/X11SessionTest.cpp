#include "Platform/Linux/x11/X11Session.h"

#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

struct X11SessionTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    std::vector<std::string> lines;
    SimulatedDiagnostics diagnostics{
        [this](std::string_view, const std::string& text) { lines.push_back(text); }};
    X11Displays displays;
    X11Session session{diagnostics, displays, [] {}};
};

TEST_F(X11SessionTest, TrustedByAnOrdinaryServer) {
    const XServer server;
    EXPECT_TRUE(session.isProcessTrusted());
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(displays.screens().size(), 1U);
    EXPECT_EQ(displays.screens()[0], (Rect{0, 0, 1280, 800}));
}

TEST_F(X11SessionTest, NotTrustedWithoutSyntheticInput) {
    const XServer server({"-extension", "XTEST"});
    EXPECT_FALSE(session.isProcessTrusted());
    EXPECT_FALSE(session.isProcessTrusted());
    EXPECT_EQ(lines.size(), 1U) << "said once, not at every poll";
}

TEST_F(X11SessionTest, WaitsForAServerToCome) {
    setenv("DISPLAY", ":65000", 1);
    EXPECT_FALSE(session.isProcessTrusted());
    EXPECT_FALSE(session.isProcessTrusted());
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_TRUE(displays.screens().empty());
    const XServer server;
    EXPECT_TRUE(session.isProcessTrusted());
    EXPECT_EQ(lines.size(), 2U);
}

} // namespace
} // namespace quillon
