#include "AppDelegate.h"
#include "CommandLine.h"
#include "DefaultsCommand.h"
#include "Hub/HubToolStore.h"
#include "Hub/InstalledToolFile.h"
#include "HubCommand.h"
#include "HubOnFiles.h"
#include "PelorinAppApp.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/session/FileLock.h"
#include "Platform/Linux/session/InstanceCaller.h"
#include "Platform/Linux/session/LinuxSession.h"
#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/session/ShowLevelCommand.h"
#include "Platform/Linux/session/SingleInstance.h"
#include "Platform/Linux/x11/AwaitDisplay.h"
#include "Platform/Platform.h"
#include "Platform/Posix/StandardError.h"
#include "Platform/Posix/StandardOutput.h"
#include "Replay/replay.h"
#include "Views/HubModel.h"
#include "Views/Screens.h"

#include <QApplication>

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace {

using namespace quillon;

/// Names that the toolkit wants before it is there.
void nameApplication() {
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quillon"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.pelorin.PelorinApp"));
}

/// How long the program and a command wait for each other with the records of the tools.
constexpr std::chrono::seconds patienceWithRecords{1};

/// One process at a time writes the records: the program as long as it runs, or a command. Nothing
/// where there is no place for them.
std::optional<std::filesystem::path> lockOfRecords(const HubServices& services) {
    const auto folder = services.supportFolder();
    return folder ? std::optional(*folder / (std::string(InstalledToolFile::fileName) + ".lock"))
                  : std::nullopt;
}

/// What cannot be locked is used all the same: a command that is in the way soon ends.
FileLock lockRecords(const HubServices& services) {
    FileLock lock;
    if (const auto file = lockOfRecords(services)) {
        [[maybe_unused]] const auto made = services.fileManager.makeFolder(file->parent_path());
        [[maybe_unused]] const auto failure = lock.acquire(*file, patienceWithRecords);
    }
    return lock;
}

HubCommand::Verb changeOf(ToolVerb verb) {
    using Change = HubCommand::Verb;
    switch (verb) {
    case ToolVerb::enable:
        return Change::enable;
    case ToolVerb::disable:
        return Change::disable;
    case ToolVerb::install:
        return Change::install;
    case ToolVerb::uninstall:
        break;
    }
    return Change::uninstall;
}

/// `app` points to the application, or to nothing as long as there is none.
InstanceHandlers handlers(LinuxPlatform& platform, PelorinAppApp* const& app) {
    return {
        .activate = [&platform](std::optional<std::uint32_t> time) { platform.reopen(time); },
        .showVolumeLevel =
            [](double percent) { AppDelegate::showVolumeLevel(static_cast<float>(percent)); },
        .toolStatus = [&app]() -> std::optional<std::string> {
            const auto status = app == nullptr ? std::nullopt : app->toolStatus();
            return status ? std::optional(statusDocument(true, QUILLON_VERSION, *status))
                          : std::nullopt;
        },
        .performOnTool =
            [&app](ToolVerb verb, const std::string& id, InstanceHandlers::ToolDone done) {
                if (app == nullptr) {
                    done("Quillon has not started its tools");
                    return;
                }
                app->perform({changeOf(verb), id}, std::move(done));
            },
        .quit = [&platform] { platform.services().application.terminate(nullptr); },
    };
}

int runOnDisplay(char* program, Diagnostics& diagnostics) {
    nameApplication();
    // Gestures, tray and focus are X11's also where the session's own programs use another display.
    // By an argument, since the environment is handed on to the programs that we start.
    std::array arguments{program, const_cast<char*>("-platform"), const_cast<char*>("xcb")};
    auto count = static_cast<int>(arguments.size());
    const QApplication application(count, arguments.data());
    const auto translation = installTranslation(QLocale());
    LinuxSession session(diagnostics);
    std::unique_ptr<HubModel> hub;
    LinuxPlatform platform(session, [&hub](std::string_view screen) {
        if (!hub) {
            Platform& services = Platform::current();
            hub = std::make_unique<HubModel>(HubToolStore::shared(), sharedToolManagers(),
                                             services.workspace, services.bundle);
        }
        return QuickScreen{screenUrl(screen), {{"hub", QVariant::fromValue(hub.get())}}};
    });
    PelorinAppApp* running = nullptr;
    SingleInstance instance(handlers(platform, running), session.diagnostics);
    while (!instance.claim()) { // another start was quicker, or is just ending
        if (const auto status = SingleInstance::activateRunning(std::cerr)) {
            return *status;
        }
    }
    Platform::setCurrent(&platform.services());
    const FileLock records = lockRecords(HubServices::of(platform.services()));
    platform.describeSession();
    PelorinAppApp app;
    running = &app;
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
    return awaitDisplay(diagnostics) ? runOnDisplay(program, diagnostics) : EXIT_SUCCESS;
}

int changeDefaults(const DefaultsRequest& request, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    StandardError diagnostics;
    LinuxSession session(diagnostics);
    return defaultsCommand(
        request, session.userDefaults, [&session] { return session.userDefaults.flush(); },
        std::cout, std::cerr);
}

HubReply replyOf(InstanceCaller::Answer answer) {
    using Outcome = HubReply::Outcome;
    switch (answer.outcome) {
    case InstanceCaller::Outcome::done:
        break;
    case InstanceCaller::Outcome::notRunning:
        return {Outcome::notRunning};
    case InstanceCaller::Outcome::noAnswer:
        return {Outcome::failed, "Quillon is running but does not answer"};
    case InstanceCaller::Outcome::refused:
        return {Outcome::failed, std::move(answer.text)};
    }
    return {Outcome::done, std::move(answer.text)};
}

HubReply askRunning(const HubRequest& request) {
    using Verb = HubRequest::Verb;
    InstanceCaller running;
    switch (request.verb) {
    case Verb::status:
    case Verb::list:
        return replyOf(running.toolStatus());
    case Verb::enable:
        return replyOf(running.performOnTool(ToolVerb::enable, request.id));
    case Verb::disable:
        return replyOf(running.performOnTool(ToolVerb::disable, request.id));
    case Verb::install:
        return replyOf(running.performOnTool(ToolVerb::install, request.id));
    case Verb::uninstall:
        return replyOf(running.performOnTool(ToolVerb::uninstall, request.id));
    case Verb::show:
        return replyOf(running.activate());
    case Verb::quit:
        break;
    }
    return replyOf(running.quit());
}

HubReply workOnFiles(const HubRequest& request, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    StandardError diagnostics;
    LinuxSession session(diagnostics);
    const HubServices services{session.runLoop, session.userDefaults.standard(),
                               session.bundle,  session.diagnostics,
                               session.urls,    session.files};
    FileLock lock;
    if (changesTools(request)) {
        lock = lockRecords(services);
    } else if (const auto file = lockOfRecords(services)) {
        [[maybe_unused]] const auto failure = lock.acquireToRead(*file, patienceWithRecords);
    }
    if (lock.isTaken()) {
        auto reply = askRunning(request); // it may have started meanwhile
        return reply.outcome == HubReply::Outcome::notRunning
                   ? HubReply{HubReply::Outcome::failed,
                              "Quillon is running, but cannot be reached over the session bus"}
                   : reply;
    }
    return hubOnFiles(request, {.services = services,
                                .version = QUILLON_VERSION,
                                .flushSettings = [&] { return session.userDefaults.flush(); },
                                .run = [&] { session.runLoop.run(); },
                                .quit = [&] { session.runLoop.quit(0); }});
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
    if (const auto* hub = std::get_if<HubRequest>(&request)) {
        settleSessionBus();
        return hubCommand(
            *hub, askRunning,
            [&](const HubRequest& asked) { return workOnFiles(asked, argc, argv); }, std::cout,
            std::cerr);
    }
    if (const auto* level = std::get_if<ShowLevelRequest>(&request)) {
        settleSessionBus();
        return showLevelCommand(level->percents, std::chrono::milliseconds(level->milliseconds),
                                std::cerr);
    }
    return run(argv[0]);
}
