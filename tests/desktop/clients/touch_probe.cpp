// Uses a touch library as a program would, and prints what it is told: a line "frame N" for each
// frame of N contacts.
//
//   touch_probe LIBRARY
//
// Reads commands: "start" opens the library and starts its default device, and prints "started" or
// "no device"; "stop" prints "stopped" once all of that is undone, or "stopped, but" and what is
// left of it. At the end of its input it ends, whether started or not.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include <dlfcn.h>

namespace {

using Device = void*;
using Callback = int (*)(Device, void*, std::int32_t, double, std::int32_t);

int printFrame(Device /*device*/, void* /*contacts*/, std::int32_t count, double /*timestamp*/,
               std::int32_t /*frame*/) {
    std::printf("frame %d\n", count);
    std::fflush(stdout);
    return 0;
}

void say(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

class Library {
  public:
    explicit Library(const char* path) : path_(path) {}

    void start() {
        handle_ = dlopen(path_, RTLD_NOW | RTLD_LOCAL);
        if (handle_ == nullptr) {
            say("no library");
            return;
        }
        device_ = symbol<Device (*)()>("MTDeviceCreateDefault")();
        if (device_ == nullptr) {
            dlclose(handle_);
            say("no device");
            return;
        }
        // Before it starts: the first frame may come at once.
        say("started");
        symbol<void (*)(Device, Callback)>("MTRegisterContactFrameCallback")(device_, &printFrame);
        symbol<void (*)(Device, int)>("MTDeviceStart")(device_, 0);
    }

    void stop() {
        symbol<void (*)(Device, Callback)>("MTUnregisterContactFrameCallback")(device_,
                                                                               &printFrame);
        symbol<void (*)(Device)>("MTDeviceStop")(device_);
        dlclose(handle_);
        handle_ = dlopen(path_, RTLD_NOW | RTLD_NOLOAD);
        say(handle_ == nullptr ? "stopped" : "stopped, but the library is still there");
    }

  private:
    template <class Function>
    Function symbol(const char* name) {
        void* address = dlsym(handle_, name);
        if (address == nullptr) {
            std::fprintf(stderr, "touch_probe: no %s\n", name);
            std::exit(1);
        }
        return reinterpret_cast<Function>(address);
    }

    const char* path_;
    void* handle_ = nullptr;
    Device device_ = nullptr;
};

} // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::fputs("usage: touch_probe LIBRARY\n", stderr);
        return 2;
    }
    Library library(words[1]);
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "start") {
            library.start();
        } else if (line == "stop") {
            library.stop();
        } else {
            std::fprintf(stderr, "touch_probe: what is '%s'?\n", line.c_str());
            return 2;
        }
    }
    return 0;
}
