#pragma once

#include "Platform/Linux/session/ToolVerb.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace quillon {

/// What the running program does when it is called over the session bus. All on the main thread,
/// from the event loop.
struct InstanceHandlers {
    /// The user has started the program again. The X timestamp of the click or key press that
    /// did it, where the desktop tells: window managers want it before a window comes up. The
    /// caller has had its answer.
    std::function<void(std::optional<std::uint32_t> timestamp)> activate;

    /// A level, from 0 to 100, to be shown as if the volume had just changed to it. The caller has
    /// had its answer.
    std::function<void(double percent)> showVolumeLevel;

    /// The state of the tools as JSON; nothing as long as they have not been started.
    std::function<std::optional<std::string>()> toolStatus;

    /// Does this with the tool. `done` is to be called once, then or later, with what went wrong
    /// for people; with nothing when it is done.
    using ToolDone = std::function<void(std::optional<std::string> failure)>;
    std::function<void(ToolVerb verb, const std::string& id, ToolDone done)> performOnTool;

    /// The program is to end. The caller has had its answer, or will not wait for it.
    std::function<void()> quit;
};

} // namespace quillon
