#include "Platform/Linux/LinuxPlatform.h"

#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/windows/DesktopPalette.h"

#include <QGuiApplication>

#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include <unistd.h>

namespace quillon {

namespace {

bool isWaylandSession() {
    const char* display = std::getenv("WAYLAND_DISPLAY");
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return (display != nullptr && *display != '\0') ||
           (type != nullptr && std::string_view(type) == "wayland");
}

xcb_connection_t* toolkitConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

constexpr const char* restartVariable = "QUILLON_STARTED_AGAIN_AT"; // uptime in milliseconds
constexpr long long shortestLife = 2000; // who dies sooner would only die again and again

/// Takes it out of the environment, so that it is not handed on to the programs that we start.
long long takeRestartTime() {
    const char* text = std::getenv(restartVariable);
    const long long time = text == nullptr ? -shortestLife : std::atoll(text);
    ::unsetenv(restartVariable);
    return time;
}

/// What is to be done when somebody calls exit() while the event loop runs, as the toolkit does
/// when the X server goes: nothing of what lives on the main function's stack is destroyed then.
std::function<void()>& uponExit() {
    static std::function<void()> done;
    return done;
}

} // namespace

LinuxPlatform::LinuxPlatform(LinuxSession& session, QuickScreens screens)
    : session_(session), lastRestart_(takeRestartTime()),
      server_(session.diagnostics, displays_, [this] { displayLost(); }),
      keys_(session.runLoop, sessionBusAddress()),
      events_(
          session.runLoop, session.diagnostics, displays_, [this] { return server_.isGranted(); },
          helperProgram("quillon-watchdog"), postedEvents_, caughtPresses_),
      monitors_(ownWindows_, postedEvents_, caughtPresses_), windows_(session.runLoop, displays_),
      application_(currentEvent_), tray_{session.runLoop, session.diagnostics, currentEvent_,
                                         ownWindows_, sessionBusAddress()},
      statusBar_(tray_), screens_(std::move(screens)),
      popovers_({displays_, &statusBar_, [this] { return inputTime(); }, screens_}),
      permissions_(
          "PermissionsView", [this](std::string_view name) { return permissionsScreen(name); },
          [this] { return inputTime(); }),
      menus_(displays_, &statusBar_, [this] { return eventPlace(); }),
      alerts_([this] { return inputTime(); }), loginItem_(thisProgram()),
      workspace_(session.diagnostics, [this] { permissions_.show(); }),
      looks_([this] { takeLook(); }), updateMessages_([this] { return inputTime(); }),
      updaters_({session.runLoop, session.bundle, session.userDefaults.standard(),
                 session.diagnostics, workspace_, updateMessages_}),
      services_{.runLoop = session.runLoop,
                .events = events_,
                .displays = displays_,
                .accessibility = server_,
                .scripting = scripting_,
                .userDefaults = session.userDefaults,
                .bundle = session.bundle,
                .diagnostics = session.diagnostics,
                .monitors = monitors_,
                .applications = windows_,
                .windowServer = windows_,
                .accessibilityElements = windows_,
                .libraries = libraries_,
                .audio = audio_,
                .urls = session.urls,
                .files = session.files,
                .application = application_,
                .statusBar = statusBar_,
                .images = images_,
                .animator = animator_,
                .popovers = popovers_,
                .menus = menus_,
                .alerts = alerts_,
                .loginItem = loginItem_,
                .updaters = updaters_,
                .workspace = workspace_} {
    // It connects, and from then on the screens and the pointer are known.
    [[maybe_unused]] const bool isTrusted = server_.isProcessTrusted();
    takeLook();
    events_.setKeyHandler([this](SpecialKey key) { keys_.stroke(key); });
    if (xcb_connection_t* connection = toolkitConnection()) {
        ownWindows_.add(ResourceRange::of(connection));
    }
}

LinuxPlatform::~LinuxPlatform() {
    // Scripts that are still running use the services that are about to go.
    session_.runLoop.finishBackground();
}

bool LinuxPlatform::isStartedAgain() { return std::getenv(restartVariable) != nullptr; }

void LinuxPlatform::describeSession() {
    if (isWaylandSession()) {
        session_.diagnostics.line(
            "⚠️ This is a Wayland session: edge gestures work only over X11 "
            "programs, and desktops "
            "may not switch; log in to an X11 session for both");
    }
}

int LinuxPlatform::run() {
    uponExit() = [this] { displayLost(); };
    [[maybe_unused]] static const int registered = std::atexit([] {
        if (uponExit()) {
            uponExit()();
        }
    });
    application_.finishLaunching();
    const int status = session_.runLoop.run();
    uponExit() = nullptr;
    saveAll();
    return status;
}

void LinuxPlatform::saveAll() {
    application_.willTerminate();
    session_.userDefaults.flush();
}

void LinuxPlatform::displayLost() {
    saveAll();
    if (X11Connection::open()) {
        startAgain();
        session_.diagnostics.line("❌ The X server closes the program's connections; ending");
    } else {
        session_.diagnostics.line("❌ The X server is gone; ending");
    }
    // Without what the toolkit would do at the end: it counts on its connection.
    std::_Exit(EXIT_FAILURE);
}

void LinuxPlatform::startAgain() {
    const long long now = std::llround(session_.runLoop.uptime() * 1000);
    if (now - lastRestart_ < shortestLife) {
        return;
    }
    session_.diagnostics.line("🔄 The X server closed a connection of the program; starting again");
    ::setenv(restartVariable, std::to_string(now).c_str(), 1);
    const std::string program = thisProgram().string();
    std::array<char*, 2> arguments{const_cast<char*>(program.c_str()), nullptr};
    ::execv(program.c_str(), arguments.data());
}

void LinuxPlatform::reopen(std::optional<std::uint32_t> inputTime) {
    reopenTime_ = inputTime.value_or(0);
    application_.reopen();
    reopenTime_ = 0;
}

void LinuxPlatform::takeLook() {
    applyDesktopPalette(looks_.look());
    workspace_.setDisplayOptions(looks_.look().options);
}

QuickScreen LinuxPlatform::permissionsScreen(std::string_view name) const {
    QuickScreen screen = screens_(name);
    const auto [input, test] = server_.extensions();
    screen.properties.insert({{"hasInputExtension", input},
                              {"hasTestExtension", test},
                              {"isWayland", isWaylandSession()}});
    return screen;
}

std::optional<PixelPoint> LinuxPlatform::eventPlace() const {
    const auto& action = currentEvent_.get();
    return action ? std::optional(PixelPoint{action->rootX, action->rootY}) : std::nullopt;
}

std::uint32_t LinuxPlatform::inputTime() const {
    const auto& action = currentEvent_.get();
    return action ? action->time : reopenTime_;
}

} // namespace quillon
