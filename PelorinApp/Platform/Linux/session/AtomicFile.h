#pragma once

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
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    /// Puts the content on the disk, with the owner and mode of the file that it will replace,
    /// but always usable; a new file is its user's alone.
    [[nodiscard]] std::optional<std::string> write(std::string_view content);

    /// Puts it in place.
    [[nodiscard]] std::optional<std::string> commit();

    /// Removes what writers of `path` that died left behind. Only for who holds the lock of it.
    static void removeAbandoned(const std::filesystem::path& path);

  private:
    std::filesystem::path path_;
    std::string temporary_;
};

/// Makes the folder and its parents as far as they are missing, for this user alone.
[[nodiscard]] std::optional<std::string> makeFolders(const std::filesystem::path& folder);

} // namespace quillon
