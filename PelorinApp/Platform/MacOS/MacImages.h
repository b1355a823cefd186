#pragma once

#include "Platform/Images.h"

namespace quillon {

/// The assets of the application's bundle, and the system's symbols.
class MacImages final : public Images {
  public:
    [[nodiscard]] std::optional<Image> named(std::string_view name) const override;
    [[nodiscard]] std::optional<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) const override;
};

} // namespace quillon
