#pragma once

#include <optional>
#include <string>

namespace quillon {

/// The application among what the system starts when the user logs in. Main thread only.
class LoginItem {
  public:
    virtual ~LoginItem() = default;

    /// False on systems that are too old for it; the rest must not be called then.
    [[nodiscard]] virtual bool isSupported() const = 0;

    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Nothing when it went well, else what went wrong, for the user.
    [[nodiscard]] virtual std::optional<std::string> registerService() = 0;
    [[nodiscard]] virtual std::optional<std::string> unregisterService() = 0;
};

} // namespace quillon
