#pragma once

#include "Platform/Platform.h"

namespace quillon {

/// The application's entry: brings up what runs for as long as the program does.
class PelorinAppApp {
  public:
    /// Switches on the tools whose stored settings say so, on the current platform.
    void launch();
};

} // namespace quillon
