#include "Platform/Linux/session/LinuxLibraries.h"

#include "Platform/Linux/session/InstalledFiles.h"
#include "Platform/Posix/LoadedLibrary.h"
#include "Platform/TouchLibrary.h"

#include <cstdlib>
#include <string>

namespace quillon {

namespace {
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
    return LoadedLibrary::open(touchLibrary());
}

} // namespace quillon
