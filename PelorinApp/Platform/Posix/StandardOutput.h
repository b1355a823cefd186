#pragma once

#include "Platform/Diagnostics.h"

#include <mutex>

namespace quillon {

/// Diagnostics on standard output, each line at once, so that a reader sees it when it happens. A
/// reader that has fallen behind loses lines rather than hold up the program.
class StandardOutput final : public Diagnostics {
  public:
    void line(std::string_view text) override;

  private:
    std::mutex mutex_;
};

} // namespace quillon
