#pragma once

#include "Platform/DynamicLibraries.h"

#include <memory>
#include <string>

namespace quillon {

class LoadedLibrary final : public DynamicLibrary {
  public:
    /// Binds all that it needs at once. On Linux its symbols are for us alone, since another
    /// library may have some of these names, too. Null when it cannot be opened.
    [[nodiscard]] static std::unique_ptr<LoadedLibrary> open(const std::string& path);

    explicit LoadedLibrary(void* handle) : handle_(handle) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() override;

    [[nodiscard]] void* resolve(const char* symbol) const override;

  private:
    void* handle_;
};

} // namespace quillon
