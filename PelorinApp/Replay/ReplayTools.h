#pragma once

#include "Platform/Platform.h"
#include "Replay/Trace.h"
#include "Tools/Edges/VolumeStep.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QObject;
struct QMetaObject;

namespace quillon {

/// The first statement of the trace that sets a property which that tool's manager does not let
/// anyone set to this value.
[[nodiscard]] std::optional<TraceError> checkProperties(const Trace& trace);

/// The real managers of the tools of a trace, made when first needed. They are used as the hub
/// uses them: through the operations of their modules and their published properties.
class ReplayTools {
  public:
    /// `levelReport` is told each level that the volume tool sets.
    ReplayTools(Platform& platform, VolumeLevelReport levelReport)
        : platform_(platform), levelReport_(std::move(levelReport)) {}

    /// Makes the tool's record one that is on or off, then calls the module's activate or
    /// deactivate.
    void switchTool(std::string_view id, bool on);
    void setProperty(std::string_view id, std::string_view property, const DefaultsObject& value);

  private:
    QObject& manager(std::string_view id);

    Platform& platform_;
    VolumeLevelReport levelReport_;
    std::set<std::string, std::less<>> on_; // as the records say
    // By class, as one manager can serve two tools.
    std::vector<std::pair<const QMetaObject*, std::shared_ptr<QObject>>> managers_;
};

} // namespace quillon
