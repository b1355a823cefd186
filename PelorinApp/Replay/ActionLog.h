#pragma once

#include "Replay/Trace.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The actions of a run as lines of text, `<ms> <kind> <detail>`, of those kinds that are shown.
class ActionLog {
  public:
    explicit ActionLog(ShownKinds shown) : shown_(std::move(shown)) {}

    void add(VirtualRunLoop::Microseconds time, std::string_view kind, std::string_view detail);

    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  private:
    ShownKinds shown_;
    std::vector<std::string> lines_;
};

} // namespace quillon
