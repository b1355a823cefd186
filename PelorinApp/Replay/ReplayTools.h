#pragma once

#include "Hub/HubToolModule.h"
#include "Hub/OwnToolManagers.h"
#include "Platform/Platform.h"
#include "Replay/Trace.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillon {

/// The first statement of the trace that sets a property which that tool's manager does not let
/// anyone set to this value.
[[nodiscard]] std::optional<TraceError> checkProperties(const Trace& trace);

/// The real managers of the tools of a trace, made when first needed. They are used as the hub
/// uses them: through their modules and their published properties.
class ReplayTools {
  public:
    /// `levelReport` is told each level that the volume tool sets.
    ReplayTools(Platform& platform, VolumeLevelReport levelReport);
    ReplayTools(const ReplayTools&) = delete;
    ReplayTools& operator=(const ReplayTools&) = delete;

    /// Makes the tool's record one that is on or off, then calls the module's activate or
    /// deactivate.
    void switchTool(std::string_view id, bool on);
    void setProperty(std::string_view id, std::string_view property, const DefaultsObject& value);

  private:
    OwnToolManagers managers_;
    std::set<std::string, std::less<>> on_; // as the records say
    std::map<std::string, HubToolModule, std::less<>> modules_;
};

} // namespace quillon
