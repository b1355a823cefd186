#include "Probe.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

void say(const char* word) {
    std::puts(word);
    std::fflush(stdout);
}

/// The grabs that a holder of the wheel needs. Asynchronous, so that nothing freezes meanwhile;
/// whether they are refused does not depend on that.
bool takeWheel(const Display& display) {
    bool all = true;
    for (std::uint8_t button = 4; button <= 7; ++button) {
        all &= accepted(display,
                        xcb_grab_button_checked(display.connection, 0, display.root,
                                                XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, button,
                                                XCB_MOD_MASK_ANY));
    }
    return all;
}

/// The line for an event, or nothing.
using Describe = std::string (*)(const xcb_generic_event_t& event);

std::string describeWheel(const xcb_generic_event_t& event) {
    const auto button = wheelPress(event);
    return button != 0 ? "wheel " + std::to_string(button) : "";
}

std::string describeAll(const xcb_generic_event_t& event) {
    const auto& input = reinterpret_cast<const xcb_button_press_event_t&>(event);
    switch (event.response_type & 0x7f) {
    case XCB_MOTION_NOTIFY:
        return "motion " + std::to_string(input.root_x) + ' ' + std::to_string(input.root_y);
    case XCB_BUTTON_PRESS:
        return "press " + std::to_string(input.detail);
    case XCB_BUTTON_RELEASE:
        return "release " + std::to_string(input.detail);
    default:
        return "";
    }
}

/// Reports what has arrived; false when the display is gone.
bool reportArrived(const Display& display, Describe describe, int& count) {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(display.connection)}) {
        if (const auto line = describe(*event); !line.empty()) {
            ++count;
            say(line.c_str());
        }
    }
    return xcb_connection_has_error(display.connection) == 0;
}

/// Reports until the deadline, or until standard input ends where that counts.
bool reportUntil(const Display& display, Clock::time_point deadline, bool untilInputEnds,
                 Describe describe) {
    int count = 0;
    std::array<pollfd, 2> sources{{{xcb_get_file_descriptor(display.connection), POLLIN, 0},
                                   {untilInputEnds ? STDIN_FILENO : -1, POLLIN, 0}}};
    while (reportArrived(display, describe, count)) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
        std::array<char, 256> ignored{};
        if (left <= 0 ||
            (sources[1].revents != 0 && read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0)) {
            std::printf("released %d\n", count);
            return true;
        }
        poll(sources.data(), sources.size(), static_cast<int>(left));
    }
    return false;
}

/// A mapped window at which an open menu's grab is aimed.
xcb_window_t menuWindow(const Display& display) {
    const auto window = xcb_generate_id(display.connection);
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(display.connection, XCB_COPY_FROM_PARENT, window, display.root, 400, 300, 160,
                      120, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(display.connection, window);
    return window;
}

/// Pointer and keyboard, for a window of our own.
bool takeScreen(const Display& display) {
    const auto window = menuWindow(display);
    const Owned<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
        display.connection,
        xcb_grab_pointer(display.connection, 1, window,
                         XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                             XCB_EVENT_MASK_POINTER_MOTION,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE,
                         XCB_CURRENT_TIME),
        nullptr));
    const Owned<xcb_grab_keyboard_reply_t> keyboard(
        xcb_grab_keyboard_reply(display.connection,
                                xcb_grab_keyboard(display.connection, 1, window, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    if (!pointer || pointer->status != XCB_GRAB_STATUS_SUCCESS || !keyboard ||
        keyboard->status != XCB_GRAB_STATUS_SUCCESS) {
        say("refused");
        return false;
    }
    say("held");
    return true;
}

} // namespace

int canGrab(const Display& display) {
    const bool free = takeWheel(display);
    say(free ? "free" : "taken");
    return free ? 0 : 1;
}

int holdWheel(const Display& display) {
    if (!takeWheel(display)) {
        say("refused");
        return 1;
    }
    say("held");
    return reportUntil(display, Clock::now() + std::chrono::hours(1), true, describeWheel) ? 0 : 3;
}

int holdMenu(const Display& display, double seconds) {
    if (!takeScreen(display)) {
        return 1;
    }
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                        std::chrono::duration<double>(seconds));
    return reportUntil(display, end, false, describeWheel) ? 0 : 3;
}

int holdScreen(const Display& display) {
    if (!takeScreen(display)) {
        return 1;
    }
    return reportUntil(display, Clock::now() + std::chrono::hours(1), true, describeAll) ? 0 : 3;
}
