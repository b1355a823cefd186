#include "Platform/Linux/files/LinuxFileManager.h"

#include "Platform/Linux/files/FileErrors.h"
#include "Platform/Linux/files/OpenFolder.h"
#include "Platform/Linux/session/AtomicFile.h"
#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Linux/session/FolderCalls.h"

#include <cerrno>
#include <system_error>
#include <utility>

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
        return fileError(std::move(*failure));
    }
    return openFolder(path);
}

FileResult<std::unique_ptr<Folder>>
LinuxFileManager::openFolder(const std::filesystem::path& path) {
    FileDescriptor opened = openedFolder(path);
    if (!opened.isOpen()) {
        return fileError("cannot open the folder", path, errno);
    }
    return std::make_unique<OpenFolder>(std::move(opened), path);
}

} // namespace quillon
