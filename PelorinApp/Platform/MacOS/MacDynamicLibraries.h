#pragma once

#include "Platform/DynamicLibraries.h"

namespace quillon {

class MacDynamicLibraries final : public DynamicLibraries {
  public:
    [[nodiscard]] std::unique_ptr<DynamicLibrary> open(std::string_view path) override;
};

} // namespace quillon
