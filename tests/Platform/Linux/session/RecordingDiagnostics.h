#pragma once

#include "Platform/Diagnostics.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

class RecordingDiagnostics final : public Diagnostics {
  public:
    void line(std::string_view text) override {
        const std::scoped_lock lock(mutex_);
        lines_.emplace_back(text);
    }

    /// What was said since the last call.
    [[nodiscard]] std::vector<std::string> take() {
        const std::scoped_lock lock(mutex_);
        return std::exchange(lines_, {});
    }

  private:
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

} // namespace quillon
