// Takes, holds and injects X11 input from outside.
#include "Probe.h"

#include <cstdio>
#include <string_view>

namespace {

constexpr const char* usage = R"(usage: x11_probe COMMAND
  can-grab           "free" if the wheel can be taken for the whole screen, else "taken" and 1
  can-grab-left      the same for presses of the left button, by a grab of the input extension
  hold-wheel         takes the wheel until standard input ends
  hold-menu SECONDS  takes pointer and keyboard focus as an open menu does
  hold-screen        takes pointer and keyboard as a screen locker does, until standard input ends,
                     and reports what it gets: motion X Y, press BUTTON, release BUTTON
  grabs              "taken NAME" or "free NAME" for each input device
  buttons            the numbers of the buttons that are down
  connections PID    a resource of each of the X connections of a process
  kill RESOURCE      has the server close the connection that it belongs to
  owner SELECTION    "somebody" or "nobody" owns it
  watch X Y W H      each change of this area of the screen: microseconds, how far the picture is
                     from the first one, and its hash
  inject             reads commands, a line each, and answers "ok" when the server has done it:
                       move X Y | nudge DX DY | wheel BUTTON COUNT
                       press BUTTON | release BUTTON | sync
                       await-up   until no button of any device is down
                       quietly COMMAND...   "ok" when it is sent; like a device, it gives the
                                            server no reason to write to any client
)";

int run(const Display& display, int argc, char** argv) {
    const std::string_view command = argc > 1 ? argv[1] : "";
    if (command == "can-grab" && argc == 2) {
        return canGrab(display);
    }
    if (command == "can-grab-left" && argc == 2) {
        return canGrabLeft(display);
    }
    if (command == "hold-wheel" && argc == 2) {
        return holdWheel(display);
    }
    if (command == "hold-menu" && argc == 3) {
        return holdMenu(display, std::strtod(argv[2], nullptr));
    }
    if (command == "hold-screen" && argc == 2) {
        return holdScreen(display);
    }
    if (command == "grabs" && argc == 2) {
        return listGrabs(display);
    }
    if (command == "buttons" && argc == 2) {
        return listButtonsDown(display);
    }
    if (command == "connections" && argc == 3) {
        return listConnections(display,
                               static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10)));
    }
    if (command == "kill" && argc == 3) {
        return killConnection(display,
                              static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10)));
    }
    if (command == "owner" && argc == 3) {
        return tellOwner(display, argv[2]);
    }
    if (command == "watch" && argc == 6) {
        return watchPixels(display, std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]),
                           std::atoi(argv[5]));
    }
    if (command == "inject" && argc == 2) {
        return inject(display);
    }
    std::fputs(usage, stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    int number = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(connection) != 0) {
        std::fputs("x11_probe: no X display\n", stderr);
        xcb_disconnect(connection);
        return 3;
    }
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0) {
        xcb_screen_next(&screen);
    }
    const int status = run({connection, screen.data->root}, argc, argv);
    xcb_disconnect(connection);
    return status;
}
