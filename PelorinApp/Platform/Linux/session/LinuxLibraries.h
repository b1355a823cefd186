#pragma once

#include "Platform/DynamicLibraries.h"

namespace quillon {

class LinuxLibraries final : public DynamicLibraries {
  public:
    [[nodiscard]] std::unique_ptr<DynamicLibrary> open(std::string_view /*path*/) override {
        return nullptr;
    }
};

} // namespace quillon
