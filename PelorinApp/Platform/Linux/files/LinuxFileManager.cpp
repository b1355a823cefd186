#include "Platform/Linux/files/LinuxFileManager.h"

#include "Platform/Linux/session/ConfigHome.h"

#include <system_error>

namespace quillon {

std::optional<std::filesystem::path> LinuxFileManager::applicationSupportDirectory() {
    return dataHome();
}

std::filesystem::path LinuxFileManager::temporaryDirectory() {
    std::error_code error;
    auto path = std::filesystem::temp_directory_path(error);
    return error ? "/tmp" : path;
}

} // namespace quillon
