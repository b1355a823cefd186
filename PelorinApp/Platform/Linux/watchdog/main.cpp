// Gives the user's input back when the program that holds it does not answer.
//
// Started by the program with the end of a socket as standard input, and a window of the connection
// that holds the input as argument. It waits for messages, and only while something is held does it
// mind their absence. It ends with the program.

#include "Platform/Linux/watchdog/WatchdogMessage.h"

#include <cstdlib>
#include <memory>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

using namespace quillon;

constexpr int socketFile = STDIN_FILENO;
constexpr int lastChance = 50; // milliseconds

void sync(xcb_connection_t* connection) {
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

bool hasNews(int timeout) {
    pollfd source{socketFile, POLLIN, 0};
    return poll(&source, 1, timeout) != 0;
}

void fake(xcb_connection_t* connection, std::uint8_t type, std::uint32_t button,
          std::uint32_t device = 0) {
    xcb_test_fake_input(connection, type, static_cast<std::uint8_t>(button), XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, static_cast<std::uint8_t>(device));
}

/// The type of a release that is one of a device's own; 0 where the server knows of none.
std::uint8_t deviceRelease(xcb_connection_t* connection) {
    constexpr std::string_view name = "XInputExtension";
    constexpr std::uint8_t buttonRelease = 4; // after the extension's first event
    const std::unique_ptr<xcb_query_extension_reply_t, decltype(&std::free)> reply(
        xcb_query_extension_reply(
            connection, xcb_query_extension(connection, name.size(), name.data()), nullptr),
        &std::free);
    return reply && reply->present != 0
               ? static_cast<std::uint8_t>(reply->first_event + buttonRelease)
               : std::uint8_t{0};
}

/// The server drops a press that the holder was asked about when its connection ends: makes a click
/// in its place. All of one, and with the button let go of on the device itself, for the finger may
/// go up at any moment, and nothing may stay down.
void clickAnew(xcb_connection_t* connection, const WatchdogMessage& said) {
    const std::uint8_t release = deviceRelease(connection);
    if (release == 0) {
        return;
    }
    for (std::uint32_t button = 1; button < 32; ++button) {
        fake(connection, release, button, said.waitingDevice);
    }
    fake(connection, XCB_BUTTON_PRESS, said.waitingButton);
    fake(connection, XCB_BUTTON_RELEASE, said.waitingButton);
}

/// Ends the holding connection, and with it all that it holds; then lets go of the buttons that it
/// had posted. The server keeps down those that a finger is still on.
void giveBack(xcb_connection_t* connection, std::uint32_t holder, const WatchdogMessage& said,
              std::uint32_t buttons) {
    xcb_kill_client(connection, holder);
    for (std::uint32_t button = 1; button < 32; ++button) {
        if ((buttons >> button & 1U) != 0) {
            fake(connection, XCB_BUTTON_RELEASE, button);
        }
    }
    if (said.waitingDevice != 0) {
        clickAnew(connection, said);
    }
    sync(connection);
}

void watch(xcb_connection_t* connection, std::uint32_t holder) {
    WatchdogMessage said;
    std::uint32_t buttons = 0; // that were down while input was held: a release may be lost
    while (xcb_connection_has_error(connection) == 0) {
        pollfd sources[]{{socketFile, POLLIN, 0}, {xcb_get_file_descriptor(connection), POLLIN, 0}};
        const int patience = said.isHolding != 0 ? static_cast<int>(watchdogPatience.count()) : -1;
        const int news = poll(sources, 2, patience);
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection)) {
            std::free(event);
        }
        if (news > 0 && sources[0].revents != 0) {
            if (recv(socketFile, &said, sizeof said, 0) != sizeof said) {
                break; // the program has ended
            }
            buttons = said.isHolding != 0 ? buttons | said.buttonsDown : 0;
        } else if (news == 0) {
            // The server may have kept the program waiting, as it now does with us.
            sync(connection);
            if (!hasNews(lastChance)) {
                break;
            }
        }
    }
    if (said.isHolding != 0) {
        giveBack(connection, holder, said, buttons);
    }
}

} // namespace

int main(int argc, char** argv) {
    int status = EXIT_FAILURE;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (argc == 2 && xcb_connection_has_error(connection) == 0) {
        sync(connection);
        if (send(socketFile, &watchdogReady, 1, MSG_NOSIGNAL) == 1) {
            watch(connection, static_cast<std::uint32_t>(std::strtoul(argv[1], nullptr, 10)));
            status = EXIT_SUCCESS;
        }
    }
    xcb_disconnect(connection);
    return status;
}
