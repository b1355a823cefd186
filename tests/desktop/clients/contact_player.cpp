// A touch library that is told how many fingers rest on its trackpad: the named pipe in
// QUILLON_TEST_CONTACTS brings the count of each frame, a line each. A frame is delivered when the
// line has been answered in the pipe of the same name with ".seen".
#include "Platform/TouchLibrary.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

using quillon::ContactFrameCallback;
using quillon::TouchDevice;

struct Player {
    ContactFrameCallback callback = nullptr;
    std::thread thread;
    int stop = -1;
} player;

void play(const std::string& path) {
    // Read and write, so that it never ends by itself.
    const int frames = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    const int seen = open((path + ".seen").c_str(), O_RDWR | O_CLOEXEC);
    std::string line;
    int number = 0;
    for (;;) {
        std::array<pollfd, 2> sources{{{frames, POLLIN, 0}, {player.stop, POLLIN, 0}}};
        poll(sources.data(), sources.size(), -1);
        if (sources[1].revents != 0) {
            break;
        }
        char byte = 0;
        while (read(frames, &byte, 1) == 1) {
            if (byte != '\n') {
                line += byte;
                continue;
            }
            player.callback(&player, nullptr, std::atoi(line.c_str()), 0, ++number);
            [[maybe_unused]] const auto wrote = write(seen, "\n", 1);
            line.clear();
        }
    }
    close(frames);
    close(seen);
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

TouchDevice MTDeviceCreateDefault() {
    return std::getenv("QUILLON_TEST_CONTACTS") != nullptr ? &player : nullptr;
}

void MTRegisterContactFrameCallback(TouchDevice /*device*/, ContactFrameCallback callback) {
    player.callback = callback;
}

void MTUnregisterContactFrameCallback(TouchDevice /*device*/, ContactFrameCallback /*callback*/) {}

void MTDeviceStart(TouchDevice /*device*/, int /*mode*/) {
    player.stop = eventfd(0, EFD_CLOEXEC);
    player.thread = std::thread(play, std::getenv("QUILLON_TEST_CONTACTS"));
}

#ifndef WITHOUT_STOP
void MTDeviceStop(TouchDevice /*device*/) {
    eventfd_write(player.stop, 1);
    player.thread.join();
    close(player.stop);
}
#endif

} // extern "C"
#pragma GCC visibility pop
