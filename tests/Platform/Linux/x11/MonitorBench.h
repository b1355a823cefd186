#pragma once

#include "Platform/Linux/x11/X11EventMonitors.h"

#include "support/XServer.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include <xcb/xtest.h>

namespace quillon {

using Types = std::vector<EventType>;

constexpr std::uint64_t everything = ~std::uint64_t{0};
inline const Types leftClick{EventType::leftMouseDown, EventType::leftMouseUp};
inline const Types leftUpAndDown{EventType::leftMouseUp, EventType::leftMouseDown};
inline const Types rightClick{EventType::rightMouseDown, EventType::rightMouseUp};
inline const Types otherClick{EventType::otherMouseDown, EventType::otherMouseUp};

/// A program with windows.
struct Program {
    std::unique_ptr<X11Connection> connection = X11Connection::open();

    [[nodiscard]] xcb_window_t show(std::int16_t x, std::int16_t y, std::uint16_t size,
                                    xcb_window_t parent = XCB_WINDOW_NONE) const {
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS};
        const xcb_window_t window = xcb_generate_id(connection->get());
        xcb_create_window(connection->get(), XCB_COPY_FROM_PARENT, window,
                          parent == XCB_WINDOW_NONE ? connection->root() : parent, x, y, size, size,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(connection->get(), window);
        connection->sync();
        return window;
    }
};

/// Monitors on a real X server, in one process with the event loop under the test's control.
struct MonitorBench : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    XServer server;
    Program user;
    Program foreign;
    Program own;
    OwnWindows ownWindows;
    PostedEvents postedEvents;
    CaughtPresses caughtPresses;
    X11EventMonitors monitors{ownWindows, postedEvents, caughtPresses};
    Types seen;
    std::vector<MonitoredEvent> events; // the same in full

    MonitorBench() { ownWindows.add(ResourceRange::of(own.connection->get())); }

    EventMonitorRef monitor(std::uint64_t mask = everything) {
        return monitors.addGlobalMonitor(mask,
                                         [this](const MonitoredEvent& event) {
                                             seen.push_back(event.type);
                                             events.push_back(event);
                                         },
                                         {});
    }

    void moveTo(std::int16_t x, std::int16_t y) const {
        xcb_test_fake_input(user.connection->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                            user.connection->root(), x, y, 0);
        user.connection->sync();
    }
    void fake(std::uint8_t type, std::uint8_t button) const {
        xcb_test_fake_input(user.connection->get(), type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                            0);
        user.connection->sync();
    }
    void click(std::uint8_t button) const {
        fake(XCB_BUTTON_PRESS, button);
        fake(XCB_BUTTON_RELEASE, button);
    }

    void notch(std::uint8_t button) const { click(button); }

    /// The pointer that all devices move.
    [[nodiscard]] xcb_input_device_id_t masterPointer() const {
        const auto found = devices(XCB_INPUT_DEVICE_TYPE_MASTER_POINTER);
        return found.empty() ? xcb_input_device_id_t{0} : found.front();
    }

    /// Those of one type, by number.
    [[nodiscard]] std::vector<xcb_input_device_id_t> devices(std::uint16_t type) const {
        const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            user.connection->get(), xcb_input_xi_query_version(user.connection->get(), 2, 3),
            nullptr));
        const XcbOwned<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
            user.connection->get(),
            xcb_input_xi_query_device(user.connection->get(), XCB_INPUT_DEVICE_ALL), nullptr));
        std::vector<xcb_input_device_id_t> found;
        if (reply) {
            auto infos = xcb_input_xi_query_device_infos_iterator(reply.get());
            for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
                if (infos.data->type == type) {
                    found.push_back(infos.data->deviceid);
                }
            }
        }
        return found;
    }

    /// Whether anything wakes the event loop.
    [[nodiscard]] static bool isWoken() {
        return QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
    }

    /// What is seen of a click here. A second one, on the bare root window, shows that all has
    /// come.
    Types seenOfClickAt(std::int16_t x, std::int16_t y, std::uint8_t button = 1) {
        constexpr std::int16_t bareX = 1270;
        constexpr std::int16_t bareY = 790;
        constexpr std::uint8_t endMark = 9;
        moveTo(x, y);
        click(button);
        bool ended = false;
        const auto end =
            monitors.addGlobalMonitor(eventMask(EventType::otherMouseUp),
                                      [&](const MonitoredEvent&) { ended = ended || atEnd_; }, {});
        // What was asked of the first click must not be answered by the second.
        EXPECT_TRUE(settle());
        atEnd_ = true;
        moveTo(bareX, bareY);
        click(endMark);
        EXPECT_TRUE(waitUntil([&] { return ended; }));
        atEnd_ = false;
        if (seen.size() >= 2 && Types(seen.end() - 2, seen.end()) == otherClick) {
            seen.resize(seen.size() - 2);
        }
        return std::exchange(seen, {});
    }

    /// Handles what has arrived: the server has sent it all, for it has answered a later request.
    [[nodiscard]] static bool settle() {
        bool did = true;
        for (int i = 0; did && i < 1000; ++i) {
            did = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
        }
        return !did;
    }

  private:
    bool atEnd_ = false;
};

} // namespace quillon
