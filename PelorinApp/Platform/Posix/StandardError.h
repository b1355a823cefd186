#pragma once

#include "Platform/Diagnostics.h"

namespace quillon {

/// The diagnostics of a command, which are no part of what it answers: on standard error, like its
/// own complaints.
class StandardError final : public Diagnostics {
  public:
    void line(std::string_view text) override;
};

} // namespace quillon
