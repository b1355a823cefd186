#pragma once

#include "Platform/RunLoop.h"
#include "Platform/UrlSession.h"

namespace quillon {

/// Fetches by the system's URL loading. Each fetch has a session of its own, which keeps nothing:
/// no cookies, no cache. One that takes more than a quarter of an hour is given up.
class MacUrlSession final : public UrlSession {
  public:
    explicit MacUrlSession(RunLoop& runLoop) : runLoop_(runLoop) {}

    [[nodiscard]] std::unique_ptr<UrlTask>
    fetchData(UrlRequest request, std::function<void(UrlResult)> completion) override;

  private:
    RunLoop& runLoop_;
};

} // namespace quillon
