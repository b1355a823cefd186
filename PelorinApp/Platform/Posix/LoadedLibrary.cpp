#include "Platform/Posix/LoadedLibrary.h"

#include <dlfcn.h>

namespace quillon {

std::unique_ptr<LoadedLibrary> LoadedLibrary::open(const std::string& path) {
    void* handle = ::dlopen(path.c_str(), RTLD_NOW);
    return handle == nullptr ? nullptr : std::make_unique<LoadedLibrary>(handle);
}

LoadedLibrary::~LoadedLibrary() { ::dlclose(handle_); }

void* LoadedLibrary::resolve(const char* symbol) const { return ::dlsym(handle_, symbol); }

} // namespace quillon
