#pragma once

#include "AppDelegate.h"
#include "Hub/HubCommands.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

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

    /// HubCommands::status(); nothing as long as the hub has not started.
    [[nodiscard]] std::optional<std::string> toolStatus() const;

    /// Carries a command out as HubCommands does; done also means that it is on the disk.
    void perform(const HubCommand& command, std::function<void(HubCommands::Outcome)> done);

  private:
    void startToolHub();

    Platform& platform_;
    std::shared_ptr<AppDelegate> delegate_;
    std::unique_ptr<HubCommands> commands_; // there since the hub has started
};

} // namespace quillon
