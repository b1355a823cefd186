#pragma once

#include "AppDelegate.h"

#include <memory>

namespace quillon {

/// The application's entry: gives the system its one delegate, and the delegate its tool hub. It
/// has no window of its own; what the user sees hangs on the status item.
class PelorinAppApp {
  public:
    /// On the current platform, which will call the delegate when it is ready.
    PelorinAppApp();
    ~PelorinAppApp();
    PelorinAppApp(const PelorinAppApp&) = delete;
    PelorinAppApp& operator=(const PelorinAppApp&) = delete;

  private:
    void startToolHub();

    Platform& platform_;
    std::shared_ptr<AppDelegate> delegate_;
    bool isHubStarted_ = false;
};

} // namespace quillon
