// The start of the program, and what comes to it over the bus, a line each.
//
//   instance_program                    starts, as the program does
//   instance_program claim              the same, but without looking for another first
//   instance_program show-level N...

#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Linux/session/ShowLevelCommand.h"
#include "Platform/Linux/session/SingleInstance.h"
#include "Platform/Linux/session/StandardOutput.h"

#include <QDBusConnection>
#include <QGuiApplication>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
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

int start(int argc, char** argv) {
    if (argc == 1) {
        if (const auto status = SingleInstance::activateRunning(std::cerr)) {
            return *status;
        }
    }
    const QGuiApplication application(argc, argv);
    StandardOutput output;
    SingleInstance instance(
        {[&](std::optional<std::uint32_t> time) {
             output.line("activated " + (time ? std::to_string(*time) : "sometime"));
         },
         [&](double percent) { output.line("level " + std::to_string(percent)); }},
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
    return argc > 1 && std::string_view(argv[1]) == "show-level" ? quillon::showLevels(argc, argv)
                                                                 : quillon::start(argc, argv);
}
