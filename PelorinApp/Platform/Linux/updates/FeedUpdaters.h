#pragma once

#include "Platform/Linux/updates/FeedUpdater.h"

namespace quillon {

class FeedUpdaters final : public Updaters {
  public:
    /// The services outlive this and all controllers.
    explicit FeedUpdaters(const UpdaterServices& services) : services_(services) {}

    std::unique_ptr<UpdaterController>
    makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) override;

  private:
    UpdaterServices services_;
};

/// What feeds' servers learn of us: the program and its version, as an HTTP header may hold it.
[[nodiscard]] std::string userAgent(std::string_view version);

} // namespace quillon
