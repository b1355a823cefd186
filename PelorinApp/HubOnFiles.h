#pragma once

#include "Hub/HubServices.h"
#include "HubCommand.h"

#include <functional>
#include <string>

namespace quillon {

/// What hubOnFiles() needs besides the hub's services. A process of its own is expected, whose
/// main thread does nothing else.
struct HubFilesContext {
    HubServices services;
    std::string version;

    /// Brings settings to the disk and says whether they got there.
    std::function<bool()> flushSettings;

    std::function<void()> run;  // the run loop, until quit() or until the user has had enough
    std::function<void()> quit; // from within run()
};

/// Whether hubOnFiles() would write files for it.
[[nodiscard]] bool changesTools(const HubRequest& request);

/// Does for a request what the running program would do, on the files alone. What only tells writes
/// nothing at all; what changes something begins as a start of the program does, so that it also
/// works before the very first. That no other process writes the files meanwhile is the caller's
/// affair.
[[nodiscard]] HubReply hubOnFiles(const HubRequest& request, const HubFilesContext& context);

} // namespace quillon
