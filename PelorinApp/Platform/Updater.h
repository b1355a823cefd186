#pragma once

#include "Platform/Sender.h"

#include <memory>
#include <optional>
#include <string>

namespace quillon {

class UpdaterDelegate {
  public:
    virtual ~UpdaterDelegate() = default;

    /// The feed's address, or nothing for the one that the bundle's configuration names.
    [[nodiscard]] virtual std::optional<std::string> feedURLStringForUpdater() = 0;
};

/// Looks for newer versions of the program: by itself now and then, and when asked to. Main thread
/// only.
class UpdaterController {
  public:
    virtual ~UpdaterController() = default;

    /// Looks at once and tells the user what came of it. The sender may be null.
    virtual void checkForUpdates(Sender* sender) = 0;
};

class Updaters {
  public:
    virtual ~Updaters() = default;

    /// A controller that begins its own checks at once if `startingUpdater`.
    virtual std::unique_ptr<UpdaterController>
    makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) = 0;
};

} // namespace quillon
