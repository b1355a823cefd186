#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace quillon {

/// What a block of the system's calls. It may have the system let go of that block, and lives until
/// it has returned all the same.
template <class... Arguments>
class SharedHandler {
  public:
    explicit SharedHandler(std::function<void(Arguments...)> handler)
        : handler_(std::make_shared<std::function<void(Arguments...)>>(std::move(handler))) {}

    void operator()(Arguments... arguments) const {
        const auto running = handler_;
        (*running)(arguments...);
    }

  private:
    std::shared_ptr<std::function<void(Arguments...)>> handler_;
};

} // namespace quillon
