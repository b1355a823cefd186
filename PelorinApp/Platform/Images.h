#pragma once

#include "Platform/Drawing.h"

#include <optional>
#include <string_view>

namespace quillon {

class Images {
  public:
    virtual ~Images() = default;

    /// An asset of the application; nothing when it has none of this name.
    [[nodiscard]] virtual std::optional<Image> named(std::string_view name) const = 0;

    /// A symbol of the system; nothing when it knows none of this name.
    [[nodiscard]] virtual std::optional<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) const = 0;
};

} // namespace quillon
