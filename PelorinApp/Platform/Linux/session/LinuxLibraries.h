#pragma once

#include "Platform/DynamicLibraries.h"

namespace quillon {

/// Of the libraries of macOS there is one here: the touch library, which is ours. The environment
/// variable QUILLON_TOUCH_LIBRARY names another file with the same symbols.
class LinuxLibraries final : public DynamicLibraries {
  public:
    [[nodiscard]] std::unique_ptr<DynamicLibrary> open(std::string_view path) override;
};

} // namespace quillon
