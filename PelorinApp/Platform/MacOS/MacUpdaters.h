#pragma once

#include "Platform/Updater.h"

namespace quillon {

/// The update framework's standard controllers, with its own windows.
class MacUpdaters final : public Updaters {
  public:
    std::unique_ptr<UpdaterController>
    makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) override;
};

} // namespace quillon
