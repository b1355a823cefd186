#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Replaces a file as a whole: whoever reads it, also after a crash, finds the old content or the
/// new. The content waits in a temporary file of the same folder, since only there is a rename
/// atomic; what is not committed is removed with this object.
///
/// Functions answer what went wrong, if anything did.
class AtomicFile {
  public:
    explicit AtomicFile(std::filesystem::path path) : path_(std::move(path)) {}

    /// The entry of an open folder that has the last name of `path`, which otherwise is for
    /// people. The folder must stay open.
    AtomicFile(int folder, std::filesystem::path path) : path_(std::move(path)), folder_(folder) {}

    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    /// Puts the content on the disk, with the owner and mode of the file that it will replace,
    /// but always usable; a new file is its user's alone.
    [[nodiscard]] std::optional<std::string> write(std::string_view content);

    /// Puts it in place.
    [[nodiscard]] std::optional<std::string> commit();

    /// Puts it in place unless something has the name already.
    [[nodiscard]] std::optional<std::string> commitWithoutReplacing();

    /// Removes what writers of `path` that died left behind. What a living one writes is locked,
    /// and stays; so does all of it where the file system has no locks.
    static void removeAbandoned(const std::filesystem::path& path);
    static void removeAbandoned(int folder, const std::string& name);

  private:
    [[nodiscard]] std::string name() const { return path_.filename(); }
    [[nodiscard]] bool makeTemporary();
    [[nodiscard]] std::optional<std::string> committed(bool renamed);

    std::filesystem::path path_;
    FileDescriptor ownFolder_;
    int folder_ = -1;
    FileDescriptor file_; // the temporary one: while it is open it is locked
    std::string temporary_;
};

/// Makes the folder and its parents as far as they are missing, for this user alone.
[[nodiscard]] std::optional<std::string> makeFolders(const std::filesystem::path& folder);

} // namespace quillon
