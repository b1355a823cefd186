#include "Platform/Linux/audio/SharedMemoryFile.h"

#include <charconv>
#include <filesystem>
#include <string>
#include <system_error>

#include <fcntl.h>

namespace quillon {

namespace {
constexpr const char* sharedMemory = "/memfd:pulseaudio"; // and whether it is deleted
}

void keepSharedMemoryFromPrograms() {
    std::error_code error;
    std::filesystem::directory_iterator files("/proc/self/fd", error);
    for (; !error && files != std::filesystem::directory_iterator(); files.increment(error)) {
        std::error_code gone;
        const auto target = std::filesystem::read_symlink(files->path(), gone);
        if (gone || !target.string().starts_with(sharedMemory)) {
            continue;
        }
        const std::string name = files->path().filename();
        int descriptor = -1;
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
}

} // namespace quillon
