#pragma once

#include "Platform/FileManager.h"
#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Removes an entry of a folder with everything in it, whatever others do in there meanwhile:
/// folders are entered by descriptor, never through a link or into what is mounted there, and left
/// only into the folder that they were entered from. Holds few of them open, however deep it gets.
class TreeRemoval {
  public:
    /// `path` is the folder's, for people.
    TreeRemoval(int folder, std::filesystem::path path) : folder_(folder), path_(std::move(path)) {}

    /// Stops at the first entry that cannot be removed. What is not there is no error.
    [[nodiscard]] std::optional<FileError> remove(const std::string& name);

  private:
    struct Entered {
        std::string name;
        FolderIdentity identity;
    };

    // Each answers 0 or an error; failing_ is then the entry in question, within entered_.
    [[nodiscard]] int removeOrEnter(int folder, const std::string& name);
    [[nodiscard]] int enter(int folder, const std::string& name);
    [[nodiscard]] int emptyFurther();
    [[nodiscard]] int leave();

    [[nodiscard]] std::filesystem::path failingPath() const;

    int folder_;
    std::filesystem::path path_;
    std::vector<Entered> entered_; // the last is current_
    FileDescriptor current_;
    std::string failing_;
    int patience_ = 1000; // how often others may get in the way
};

} // namespace quillon
