#pragma once

#include "Platform/Platform.h"
#include "Platform/Quick/QuickScreen.h"

#include <memory>

namespace quillon {

/// The services of macOS. To be made before the toolkit's application object, which finds the
/// program's delegate then and hands on to it what the system tells.
class MacPlatform {
  public:
    /// `screens` is asked for each screen when it is about to be shown.
    explicit MacPlatform(QuickScreens screens);
    MacPlatform(const MacPlatform&) = delete;
    MacPlatform& operator=(const MacPlatform&) = delete;
    ~MacPlatform();

    /// To be called when the event loop has ended, while everything is still there.
    void willTerminate();

    [[nodiscard]] Platform& services();

  private:
    struct Services;
    std::unique_ptr<Services> services_;
};

} // namespace quillon
