// The start of the program, and what comes to it over the bus, a line each.
//
//   instance_program                    starts, as the program does
//   instance_program claim              the same, but without looking for another first
//   instance_program show-level N...
//   instance_program status|enable ID|disable ID|install ID|uninstall ID|quit
//                                       calls the one that runs, and says what came of it

#include "Platform/Linux/session/InstanceCaller.h"
#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/session/ShowLevelCommand.h"
#include "Platform/Linux/session/SingleInstance.h"
#include "Platform/Posix/StandardOutput.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/prctl.h>

namespace quillon {
namespace {

int showLevels(int argc, char** argv) {
    std::vector<double> percents;
    for (int i = 2; i < argc; ++i) {
        percents.push_back(std::strtod(argv[i], nullptr));
    }
    return showLevelCommand(percents, std::chrono::milliseconds(1), std::cerr);
}

int callRunning(std::string_view verb, const std::string& id) {
    using Outcome = InstanceCaller::Outcome;
    InstanceCaller running;
    const auto answer = verb == "status"    ? running.toolStatus()
                        : verb == "quit"    ? running.quit()
                        : verb == "enable"  ? running.performOnTool(ToolVerb::enable, id)
                        : verb == "disable" ? running.performOnTool(ToolVerb::disable, id)
                        : verb == "install" ? running.performOnTool(ToolVerb::install, id)
                                            : running.performOnTool(ToolVerb::uninstall, id);
    const std::map<Outcome, std::string> names{{Outcome::done, "done"},
                                               {Outcome::notRunning, "not running"},
                                               {Outcome::noAnswer, "no answer"},
                                               {Outcome::refused, "refused"}};
    std::cout << names.at(answer.outcome) << ": " << answer.text << std::endl;
    return 0;
}

std::string nameOf(ToolVerb verb) {
    return verb == ToolVerb::enable    ? "enable"
           : verb == ToolVerb::disable ? "disable"
           : verb == ToolVerb::install ? "install"
                                       : "uninstall";
}

int start(int argc, char** argv) {
    if (argc == 1) {
        if (const auto status = SingleInstance::activateRunning(std::cerr)) {
            return *status;
        }
    }
    const QGuiApplication application(argc, argv);
    StandardOutput output;
    InstanceHandlers::ToolDone installing;
    SingleInstance instance(
        {.activate =
             [&](std::optional<std::uint32_t> time) {
                 output.line("activated " + (time ? std::to_string(*time) : "sometime"));
                 if (installing) { // an install ends with the next start
                     std::exchange(installing, nullptr)("ended by a start");
                 }
             },
         .showVolumeLevel =
             [&](double percent) { output.line("level " + std::to_string(percent)); },
         .toolStatus =
             [&] {
                 const bool isReady = std::getenv("QUILLON_TEST_NO_TOOLS") == nullptr;
                 return isReady ? std::optional<std::string>("{}") : std::nullopt;
             },
         .performOnTool =
             [&](ToolVerb verb, const std::string& id, InstanceHandlers::ToolDone done) {
                 output.line(nameOf(verb) + " " + id);
                 if (id == "wrong") {
                     done("there is no tool 'wrong'");
                 } else if (verb == ToolVerb::install) {
                     installing = std::move(done);
                 } else {
                     done(std::nullopt);
                 }
             },
         .quit =
             [&] {
                 output.line("quit");
                 // What is still to be saved takes a moment.
                 QTimer::singleShot(300, [] { QCoreApplication::exit(0); });
             }},
        output);
    if (!instance.claim()) {
        output.line("taken");
        return 0;
    }
    output.line(QDBusConnection::sessionBus().isConnected() ? "running" : "running without a bus");
    return QGuiApplication::exec();
}

} // namespace
} // namespace quillon

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    quillon::settleSessionBus();
    const std::string_view verb = argc > 1 ? argv[1] : "claim";
    if (verb == "show-level") {
        return quillon::showLevels(argc, argv);
    }
    return verb == "claim" ? quillon::start(argc, argv)
                           : quillon::callRunning(verb, argc > 2 ? argv[2] : "");
}
