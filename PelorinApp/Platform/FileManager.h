#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillon {

struct FileError {
    std::string description; // for people; one line
};

template <class T>
using FileResult = std::variant<T, FileError>;

/// Whether a text can name one entry of a folder: not empty, not "." or "..", without a slash or a
/// NUL, and of at most 255 bytes.
[[nodiscard]] bool isEntryName(std::string_view name);

/// A folder that is held open. Entries are named by one component; what is no such name, and a link
/// where a folder is wanted, is refused, so that whatever others put into the folder, nothing
/// outside it is touched. Any thread, one call at a time; calls may block.
class Folder {
  public:
    Folder() = default;
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    virtual ~Folder() = default;

    /// The folder of this name within, made if it is missing.
    [[nodiscard]] virtual FileResult<std::unique_ptr<Folder>> makeFolder(std::string_view name) = 0;

    /// False also of what cannot be seen. A link counts, whatever it leads to.
    [[nodiscard]] virtual bool exists(std::string_view name) = 0;

    /// The content of a regular file; an error also when it is larger than `largest` bytes.
    [[nodiscard]] virtual FileResult<std::string> read(std::string_view name,
                                                       std::size_t largest) = 0;

    /// Puts the content on the disk, then in the place of whatever file or link had the name:
    /// whoever reads it, also after a crash, finds the old content or the new.
    [[nodiscard]] virtual std::optional<FileError> write(std::string_view name,
                                                         std::string_view content) = 0;

    /// Gives an entry another name, in the place of the file or link that had it.
    [[nodiscard]] virtual std::optional<FileError> rename(std::string_view name,
                                                          std::string_view newName) = 0;

    /// Keeps what has the name under a second one, `keptName`, which nothing must have yet. Where
    /// there cannot be two names a copy is kept; what cannot be copied loses the first.
    [[nodiscard]] virtual std::optional<FileError> keep(std::string_view name,
                                                        std::string_view keptName) = 0;

    /// Removes an entry with everything in it; a link goes, and not what it leads to. What is not
    /// there is no error.
    [[nodiscard]] virtual std::optional<FileError> remove(std::string_view name) = 0;
};

/// The user's files. Any thread; calls may block.
class FileManager {
  public:
    virtual ~FileManager() = default;

    /// The user's folder for what applications keep, which need not exist yet; nothing when there
    /// is none to be had.
    [[nodiscard]] virtual std::optional<std::filesystem::path> applicationSupportDirectory() = 0;
    [[nodiscard]] virtual std::filesystem::path temporaryDirectory() = 0;

    /// The folder of this path, made with its parents as far as they are missing. Links on the way,
    /// and at its end, are followed: where a user keeps files is the user's choice.
    [[nodiscard]] virtual FileResult<std::unique_ptr<Folder>>
    makeFolder(const std::filesystem::path& path) = 0;

    /// The folder of this path where it is there already.
    [[nodiscard]] virtual FileResult<std::unique_ptr<Folder>>
    openFolder(const std::filesystem::path& path) = 0;
};

} // namespace quillon
