#include "Platform/Linux/session/LinuxLibraries.h"

#include "Platform/Linux/session/InstalledFiles.h"
#include "Platform/TouchLibrary.h"

#include <cstdlib>
#include <string>

#include <dlfcn.h>

namespace quillon {

namespace {

class LoadedLibrary final : public DynamicLibrary {
  public:
    explicit LoadedLibrary(void* handle) : handle_(handle) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() override { ::dlclose(handle_); }

    [[nodiscard]] void* resolve(const char* symbol) const override {
        return ::dlsym(handle_, symbol);
    }

  private:
    void* handle_;
};

std::string touchLibrary() {
    const char* other = std::getenv("QUILLON_TOUCH_LIBRARY");
    return other != nullptr && *other != '\0' ? other
                                              : privateLibrary("libquillon-touch.so").string();
}

} // namespace

std::unique_ptr<DynamicLibrary> LinuxLibraries::open(std::string_view path) {
    if (path != touchLibraryPath) {
        return nullptr;
    }
    // Its symbols are for us alone: another library may have some of these names, too.
    void* handle = ::dlopen(touchLibrary().c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle == nullptr ? nullptr : std::make_unique<LoadedLibrary>(handle);
}

} // namespace quillon
