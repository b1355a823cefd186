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

#include <csignal>
#include <iostream>
#include <optional>

namespace {

using namespace quillon;

/// Names and defaults that the toolkit wants before it is there.
void setUpToolkit() {
    // Gestures, tray and focus are X11's also where the session's own programs use another display.
    qputenv("QT_QPA_PLATFORM", "xcb");
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quillon"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.pelorin.PelorinApp"));
}

int runOnDisplay(int argc, char** argv) {
    setUpToolkit();
    const QApplication application(argc, argv);
    LinuxSession session;
    LinuxPlatform platform(session, screenUrl);
    SingleInstance instance(
        {.activate = [&platform](std::optional<std::uint32_t> time) { platform.reopen(time); },
         .showVolumeLevel =
             [](double percent) { AppDelegate::showVolumeLevel(static_cast<float>(percent)); }},
        session.diagnostics);
    if (!instance.claim()) { // another start was quicker
        return SingleInstance::activateRunning(std::cerr).value_or(EXIT_FAILURE);
    }
    Platform::setCurrent(&platform.services());
    platform.describeSession();
    const PelorinAppApp app;
    return platform.run();
}

int run(int argc, char** argv) {
    blockEndSignals(); // before there is any thread that they could end
    settleSessionBus();
    if (const auto status = SingleInstance::activateRunning(std::cerr)) {
        return *status;
    }
    StandardOutput diagnostics;
    return awaitDisplay(diagnostics) ? runOnDisplay(argc, argv) : EXIT_SUCCESS;
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
    return run(argc, argv);
}
