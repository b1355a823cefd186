#pragma once

#include "Platform/Images.h"

#include <QString>

namespace quillon {

/// The pictures that are compiled in. All are scalable drawings.
class LinuxImages final : public Images {
  public:
    [[nodiscard]] std::optional<Image> named(std::string_view name) const override;
    [[nodiscard]] std::optional<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) const override;
};

/// Where its drawing is among the resources; empty when there is none.
[[nodiscard]] QString drawingOf(const Image& image);

} // namespace quillon
