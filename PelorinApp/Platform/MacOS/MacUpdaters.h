#pragma once

#include "Platform/Updater.h"

namespace quillon {

class NativeViews;

/// The update framework's standard controllers, with its own windows.
class MacUpdaters final : public Updaters {
  public:
    /// `views` must outlive this object and its controllers.
    explicit MacUpdaters(const NativeViews& views) : views_(views) {}

    std::unique_ptr<UpdaterController>
    makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) override;

  private:
    const NativeViews& views_;
};

} // namespace quillon
