#include "Platform/Linux/LinuxPlatform.h"

#include <cstdlib>
#include <string_view>

namespace quillon {

namespace {

bool isWaylandSession() {
    const char* display = std::getenv("WAYLAND_DISPLAY");
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return (display != nullptr && *display != '\0') ||
           (type != nullptr && std::string_view(type) == "wayland");
}

} // namespace

LinuxPlatform::LinuxPlatform() = default;

LinuxPlatform::~LinuxPlatform() {
    // Scripts that are still running use the services that are about to go.
    runLoop_.finishBackground();
}

void LinuxPlatform::describeSession() {
    if (isWaylandSession()) {
        diagnostics_.line("⚠️ This is a Wayland session: edge gestures work only over X11 "
                          "programs, and desktops "
                          "may not switch; log in to an X11 session for both");
    }
}

int LinuxPlatform::run() {
    const int status = runLoop_.run();
    userDefaults_.flush();
    return status;
}

void LinuxPlatform::displayLost() {
    diagnostics_.line("❌ The X server is gone; ending");
    runLoop_.quit(1);
}

} // namespace quillon
