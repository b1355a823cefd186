// The program's entry on macOS.

#include "CommandLine.h"
#include "DefaultsCommand.h"
#include "Hub/HubToolStore.h"
#include "PelorinAppApp.h"
#include "Platform/MacOS/CoreFoundationTypes.h"
#include "Platform/MacOS/MacPlatform.h"
#include "Platform/MacOS/MacUserDefaults.h"
#include "Platform/Posix/StandardError.h"
#include "Platform/Posix/StandardOutput.h"
#include "Replay/replay.h"
#include "Views/HubModel.h"
#include "Views/Screens.h"

#include <CoreFoundation/CFPreferences.h>

#include <QCoreApplication>
#include <QGuiApplication>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace {

using namespace quillon;

int run(int argc, char** argv) {
    std::unique_ptr<HubModel> hub;
    MacPlatform platform([&hub](std::string_view screen) {
        if (!hub) {
            Platform& services = Platform::current();
            hub = std::make_unique<HubModel>(HubToolStore::shared(), sharedToolManagers(),
                                             services.workspace, services.bundle);
        }
        return QuickScreen{screenUrl(screen), {{"hub", QVariant::fromValue(hub.get())}}};
    });
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quillon"));
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const auto translation = installTranslation(QLocale());
    Platform::setCurrent(&platform.services());
    int status = EXIT_SUCCESS;
    {
        const PelorinAppApp app;
        status = QGuiApplication::exec();
        platform.willTerminate();
    }
    hub = nullptr;
    Platform::setCurrent(nullptr);
    return status;
}

int changeDefaults(const DefaultsRequest& request, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    StandardError diagnostics;
    MacUserDefaultsStores stores(diagnostics);
    const auto flush = [&request] {
        const CfOwned<CFStringRef> suite = cfText(request.suite);
        return suite && CFPreferencesAppSynchronize(
                            request.suite.empty() ? kCFPreferencesCurrentApplication : suite.get());
    };
    return defaultsCommand(request, stores, flush, std::cout, std::cerr);
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
    if (!std::holds_alternative<RunRequest>(request)) {
        std::cerr << "quillon: this command needs a message bus, which macOS does not have\n";
        return EXIT_FAILURE;
    }
    return run(argc, argv);
}
