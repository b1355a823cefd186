#pragma once

#include "Platform/LoginItem.h"

namespace quillon {

/// The application's own service, which there is from macOS 13 on; before, the answers of
/// `MissingLoginItem`.
class MacLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isSupported() const override;
    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] std::optional<std::string> registerService() override;
    [[nodiscard]] std::optional<std::string> unregisterService() override;
};

/// What a system answers that is too old for such a service. Asks nothing of the system.
class MissingLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isSupported() const override;
    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] std::optional<std::string> registerService() override;
    [[nodiscard]] std::optional<std::string> unregisterService() override;
};

} // namespace quillon
