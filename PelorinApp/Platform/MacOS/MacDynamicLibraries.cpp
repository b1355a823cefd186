#include "Platform/MacOS/MacDynamicLibraries.h"

#include "Platform/Posix/LoadedLibrary.h"

#include <string>

namespace quillon {

std::unique_ptr<DynamicLibrary> MacDynamicLibraries::open(std::string_view path) {
    return LoadedLibrary::open(std::string(path));
}

} // namespace quillon
