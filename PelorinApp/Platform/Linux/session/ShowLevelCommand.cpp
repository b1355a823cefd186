#include "Platform/Linux/session/ShowLevelCommand.h"

#include "Platform/Linux/session/InstanceCaller.h"
#include "Platform/Linux/session/SessionBus.h"

#include <ostream>
#include <string>
#include <thread>

namespace quillon {

namespace {

std::string complaint(const InstanceCaller::Answer& answer) {
    switch (answer.outcome) {
    case InstanceCaller::Outcome::done:
        break;
    case InstanceCaller::Outcome::notRunning:
        return "Quillon is not running in this session";
    case InstanceCaller::Outcome::noAnswer:
        return "Quillon is running but does not answer";
    case InstanceCaller::Outcome::refused:
        return "Quillon does not show the level: " + answer.text;
    }
    return {};
}

} // namespace

int showLevelCommand(std::span<const double> percents, std::chrono::milliseconds pace,
                     std::ostream& errors) {
    if (!hasSessionBus()) {
        errors << "quillon: there is no session bus on which to reach the running Quillon\n";
        return 1;
    }
    InstanceCaller running;
    auto turn = std::chrono::steady_clock::now();
    for (const double percent : percents) {
        std::this_thread::sleep_until(turn);
        turn += pace;
        const auto text = complaint(running.showVolumeLevel(percent));
        if (!text.empty()) {
            errors << "quillon: " << text << '\n';
            return 1;
        }
    }
    return 0;
}

} // namespace quillon
