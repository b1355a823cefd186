#pragma once

#include "Platform/Event.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace quillon {

/// Something that the user did, and where and when.
struct UserAction {
    EventType type;
    std::uint32_t time = 0; // of the X server, in milliseconds; 0 where nobody said
    std::int32_t rootX = 0; // pixels from the root window's top left corner
    std::int32_t rootY = 0;
    bool operator==(const UserAction&) const = default;
};

/// What the user did that is being handled right now. Main thread only.
class CurrentEvent {
  public:
    /// Nothing while something else makes the code run.
    [[nodiscard]] const std::optional<UserAction>& get() const { return action_; }

    /// While it exists, this is what is being handled. Scopes nest.
    class Scope {
      public:
        Scope(CurrentEvent& current, const UserAction& action)
            : current_(current), before_(std::exchange(current.action_, action)) {}
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope() { current_.action_ = before_; }

      private:
        CurrentEvent& current_;
        std::optional<UserAction> before_;
    };

  private:
    std::optional<UserAction> action_;
};

} // namespace quillon
