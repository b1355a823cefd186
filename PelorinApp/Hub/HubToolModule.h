#pragma once

#include "Tools/Edges/ScrollReverseManager.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Edges/VolumeControlManager.h"
#include "Tools/Pointer/MediaControlManager.h"
#include "Tools/Pointer/WindowSwitcherManager.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The hub's handle on a tool that is built in: what it is called, how it is drawn, and how it is
/// switched.
struct HubToolModule {
    std::string id;
    std::string name;
    std::string icon; // a symbol's name
    std::string subtitle;

    /// Where older releases kept whether the tool is on; empty for one that they did not have.
    std::string legacyEnabledKey;

    /// The name of the screen with the tool's settings.
    std::function<std::string()> makeView;

    // Called when the tool's record says so, on the main thread.
    std::function<void()> activate;
    std::function<void()> deactivate;
};

/// The managers that the modules switch. Each is made when it is first asked for.
class ToolManagers {
  public:
    virtual ~ToolManagers() = default;

    virtual WindowSwitcherManager& windowSwitcher() = 0;
    virtual MediaControlManager& mediaControl() = 0;
    virtual VolumeControlManager& volumeControl() = 0;
    virtual Tool4EdgesManager& desktopSwitcher() = 0;
    virtual ScrollReverseManager& scrollReverse() = 0;
};

/// The process-wide ones.
[[nodiscard]] ToolManagers& sharedToolManagers();

/// Whether a tool is installed and switched on.
using IsToolOn = std::function<bool(std::string_view id)>;

/// The six modules. They keep a reference to the managers; `isOn` answers for the record of the
/// other tool where one manager serves two.
[[nodiscard]] std::vector<HubToolModule> hubToolModules(ToolManagers& managers,
                                                        const IsToolOn& isOn);

/// The same modules with nothing behind them, for work on the records alone.
[[nodiscard]] std::vector<HubToolModule> hubToolDescriptions();

} // namespace quillon
