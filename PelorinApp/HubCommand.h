#pragma once

#include "CommandLine.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace quillon {

/// What has come of a request.
struct HubReply {
    enum class Outcome { done, notRunning, failed } outcome = Outcome::done;

    /// Of one that failed, why, for people; else the status document, where that was asked for.
    std::string text = {};
};

/// One that can answer a request: the program that runs, or what stands in for it.
using HubResponder = std::function<HubReply(const HubRequest&)>;

/// `quillon status` and the other commands of the tool hub: puts the request to the program that
/// runs and, where none does, to the files. Answers the exit status: 0; 1 with a line on `err` when
/// it could not be done; 3, with a line, when it takes a running program and there is none.
int hubCommand(const HubRequest& request, const HubResponder& running, const HubResponder& files,
               std::ostream& out, std::ostream& err);

/// The document that `status --json` prints, in fixed order: {"running", "version"} of the program,
/// and what HubCommands::status() says.
[[nodiscard]] std::string statusDocument(bool isRunning, const std::string& version,
                                         const std::string& hubStatus);

} // namespace quillon
