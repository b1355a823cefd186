#include "CommandLine.h"
#include "DefaultsCommand.h"
#include "PelorinAppApp.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/session/ShowLevelCommand.h"
#include "Platform/Platform.h"
#include "Replay/replay.h"

#include <QCoreApplication>

#include <chrono>
#include <csignal>
#include <iostream>

namespace {

using namespace quillon;

int run(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    LinuxPlatform platform;
    Platform::setCurrent(&platform.services());
    platform.describeSession();
    PelorinAppApp().launch();
    return platform.run();
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
        const QCoreApplication application(argc, argv);
        LinuxPlatform platform;
        FileUserDefaultsStores& stores = platform.userDefaults();
        return defaultsCommand(
            *defaults, stores, [&stores] { return stores.flush(); }, std::cout, std::cerr);
    }
    if (const auto* showLevel = std::get_if<ShowLevelRequest>(&request)) {
        settleSessionBus();
        return showLevelCommand(showLevel->percents,
                                std::chrono::milliseconds(showLevel->milliseconds), std::cerr);
    }
    return run(argc, argv);
}
