#include "Platform/Linux/files/LinuxFileManager.h"

#include "Platform/Linux/files/OpenFolder.h"
#include "Platform/Linux/session/AtomicFile.h"
#include "Platform/Linux/session/ConfigHome.h"

#include <cerrno>
#include <fcntl.h>
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

FileResult<std::unique_ptr<Folder>>
LinuxFileManager::makeFolder(const std::filesystem::path& path) {
    if (auto failure = makeFolders(path)) {
        return FileError{std::move(*failure)};
    }
    return openFolder(path);
}

FileResult<std::unique_ptr<Folder>>
LinuxFileManager::openFolder(const std::filesystem::path& path) {
    FileDescriptor opened(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen()) {
        return FileError{systemError("cannot open the folder " + path.string(), errno)};
    }
    return std::make_unique<OpenFolder>(std::move(opened), path);
}

} // namespace quillon
