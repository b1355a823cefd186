#pragma once

#include "Platform/Diagnostics.h"

#include <mutex>

namespace quillon {

/// Diagnostics on standard output, flushed per line so that a reader sees each when it happens.
class StandardOutput final : public Diagnostics {
  public:
    void line(std::string_view text) override;

  private:
    std::mutex mutex_;
};

} // namespace quillon
