#include "AppDelegate.h"
#include "CommandLine.h"
#include "DefaultsCommand.h"
#include "PelorinAppApp.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/session/LinuxSession.h"
#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/session/ShowLevelCommand.h"
#include "Platform/Linux/session/SingleInstance.h"
#include "Platform/Linux/x11/AwaitDisplay.h"
#include "Platform/Platform.h"
#include "Replay/replay.h"
#include "Views/Screens.h"

#include <QApplication>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

using namespace quillon;

/// Names that the toolkit wants before it is there.
void nameApplication() {
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quillon"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.pelorin.PelorinApp"));
}

int runOnDisplay(char* program) {
    nameApplication();
    // Gestures, tray and focus are X11's also where the session's own programs use another display.
    // By an argument, since the environment is handed on to the programs that we start.
    std::array arguments{program, const_cast<char*>("-platform"), const_cast<char*>("xcb")};
    auto count = static_cast<int>(arguments.size());
    const QApplication application(count, arguments.data());
    LinuxSession session;
    LinuxPlatform platform(session, screenUrl);
    SingleInstance instance(
        {.activate = [&platform](std::optional<std::uint32_t> time) { platform.reopen(time); },
         .showVolumeLevel =
             [](double percent) { AppDelegate::showVolumeLevel(static_cast<float>(percent)); }},
        session.diagnostics);
    while (!instance.claim()) { // another start was quicker, or is just ending
        if (const auto status = SingleInstance::activateRunning(std::cerr)) {
            return *status;
        }
    }
    Platform::setCurrent(&platform.services());
    platform.describeSession();
    const PelorinAppApp app;
    const int status = platform.run();
    Platform::setCurrent(nullptr);
    return status;
}

/// Whoever starts us may have closed them; the next files to be opened would take their numbers,
/// and what is printed would go there.
void openStandardDescriptors() {
    int opened = 0;
    do {
        opened = ::open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    ::close(opened);
}

int run(char* program) {
    blockEndSignals(); // before there is any thread that they could end
    settleSessionBus();
    // One that has started itself again would find itself, as long as the bus has not noticed.
    if (!LinuxPlatform::isStartedAgain()) {
        if (const auto status = SingleInstance::activateRunning(std::cerr)) {
            return *status;
        }
    }
    StandardOutput diagnostics;
    return awaitDisplay(diagnostics) ? runOnDisplay(program) : EXIT_SUCCESS;
}

int changeDefaults(const DefaultsRequest& request, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    LinuxSession session;
    return defaultsCommand(
        request, session.userDefaults, [&session] { return session.userDefaults.flush(); },
        std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv) {
    openStandardDescriptors();
    // Whoever reads the diagnostics may go away; the gestures stay.
    std::signal(SIGPIPE, SIG_IGN);

    const Request request = parseCommandLine(argc, argv, QUILLON_VERSION);
    if (const auto* print = std::get_if<PrintRequest>(&request)) {
        std::cout << print->output;
        std::cerr << print->error;
        return print->status;
    }
    if (const auto* replay = std::get_if<ReplayRequest>(&request)) {
        return replayCommand(replay->file, replay->check, std::cout, std::cerr);
    }
    if (const auto* defaults = std::get_if<DefaultsRequest>(&request)) {
        return changeDefaults(*defaults, argc, argv);
    }
    if (const auto* level = std::get_if<ShowLevelRequest>(&request)) {
        settleSessionBus();
        return showLevelCommand(level->percents, std::chrono::milliseconds(level->milliseconds),
                                std::cerr);
    }
    return run(argv[0]);
}
