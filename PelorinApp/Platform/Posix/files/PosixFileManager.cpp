#include "Platform/Posix/files/PosixFileManager.h"

#include "Platform/Posix/files/AtomicFile.h"
#include "Platform/Posix/files/FileErrors.h"
#include "Platform/Posix/files/FolderCalls.h"
#include "Platform/Posix/files/OpenFolder.h"

#include <cerrno>
#include <utility>

namespace quillon {

FileResult<std::unique_ptr<Folder>>
PosixFileManager::makeFolder(const std::filesystem::path& path) {
    if (auto failure = makeFolders(path)) {
        return fileError(std::move(*failure));
    }
    return openFolder(path);
}

FileResult<std::unique_ptr<Folder>>
PosixFileManager::openFolder(const std::filesystem::path& path) {
    FileDescriptor opened = openedFolder(path);
    if (!opened.isOpen()) {
        return fileError("cannot open the folder", path, errno);
    }
    return std::make_unique<OpenFolder>(std::move(opened), path);
}

} // namespace quillon
