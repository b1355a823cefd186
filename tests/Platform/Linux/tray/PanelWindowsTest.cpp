#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/PanelSample.h"
#include "support/XServer.h"

#include <array>
#include <vector>

#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {
thread_local int sendings = 0;
} // namespace

// In front of the C library's: what is sent to the server comes by here. Who waits for each answer
// before the next question sends as often as he asks; how often he waits is a matter of luck.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): theirs are reserved
extern "C" ssize_t writev(int descriptor, const iovec* pieces, int count) {
    ++sendings;
    return ::syscall(SYS_writev, descriptor, pieces, count);
}

namespace quillon {
namespace {

TEST(PlainStrip, FewPixelsAlongTheWholePanel) {
    EXPECT_EQ(plainStrip({0, 770, 1280, 30}), (PixelRect{0, 775, 1280, 3}));
    EXPECT_EQ(plainStrip({1240, 0, 40, 800}), (PixelRect{1246, 0, 5, 800}));
    EXPECT_EQ(plainStrip({5, 7, 1, 1}), (PixelRect{5, 7, 1, 1}));
    for (const int length : {3840, 5120, 20000}) {
        const PixelRect strip = plainStrip({0, 0, length, 60});
        EXPECT_LE(strip.width * strip.height, 4000);
        EXPECT_EQ(strip.height, 1);
    }
}

struct PanelWindows : testing::Test {
    XServer server;
    std::unique_ptr<X11Connection> connection = X11Connection::open();
    TrayAtoms atoms{*connection};

    xcb_window_t window(const PixelRect& place, bool isDock) const {
        xcb_connection_t* const x = connection->get();
        const xcb_window_t made = xcb_generate_id(x);
        xcb_create_window(x, XCB_COPY_FROM_PARENT, made, connection->root(),
                          static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                          static_cast<std::uint16_t>(place.width),
                          static_cast<std::uint16_t>(place.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        if (isDock) {
            const std::array types{xcb_atom_t{XCB_ATOM_CURSOR}, atoms.dockType};
            xcb_change_property(x, XCB_PROP_MODE_REPLACE, made, atoms.windowType, XCB_ATOM_ATOM, 32,
                                types.size(), types.data());
        }
        return made;
    }
};

TEST_F(PanelWindows, DocksAmongManyWindowsInFewQuestions) {
    const PixelRect below{0, 770, 1280, 30};
    const PixelRect upright{0, 0, 40, 770};
    std::vector<xcb_window_t> clients{window(below, true)};
    for (int i = 0; i < 60; ++i) {
        clients.push_back(window({i, i, 10, 10}, false));
    }
    clients.push_back(0x7FFFFFF); // gone
    clients.push_back(window(upright, true));
    for (const bool listed : {false, true}) {
        if (listed) {
            xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(),
                                atoms.clientList, XCB_ATOM_WINDOW, 32,
                                static_cast<std::uint32_t>(clients.size()), clients.data());
        }
        connection->sync();
        const int before = sendings;
        EXPECT_EQ(docks(*connection, atoms), (std::vector{below, upright}));
        EXPECT_GT(sendings, before);
        EXPECT_LT(sendings - before, 10);
    }
}

} // namespace
} // namespace quillon
