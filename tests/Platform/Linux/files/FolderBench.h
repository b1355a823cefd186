#pragma once

#include "Platform/Linux/files/LinuxFileManager.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace quillon {

/// A folder of the file manager's, and one outside of it that nothing may touch.
class FolderBench : public testing::Test {
  protected:
    FolderBench() {
        writeFile(outside / "kept", "outside");
        writeFile(outside / "folder" / "kept", "outside");
        outsideBefore = stateOf(outside);
        folder = std::get<std::unique_ptr<Folder>>(files.makeFolder(path));
    }
    ~FolderBench() override { EXPECT_EQ(stateOf(outside), outsideBefore); }

    /// What is in a tree: names, kinds, modes, and contents.
    static std::vector<std::string> stateOf(const std::filesystem::path& tree) {
        std::vector<std::string> state;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(tree)) {
            struct stat info {};
            ::lstat(entry.path().c_str(), &info);
            state.push_back(entry.path().string() + " " + std::to_string(info.st_mode) + " " +
                            std::to_string(info.st_nlink) + " " +
                            (S_ISREG(info.st_mode) ? readFile(entry.path()) : ""));
        }
        std::ranges::sort(state);
        return state;
    }

    static std::string textOf(const FileResult<std::string>& result) {
        const auto* text = std::get_if<std::string>(&result);
        return text != nullptr ? *text : "error: " + std::get<FileError>(result).description;
    }
    static std::string textOf(const std::optional<FileError>& error) {
        return error ? error->description : "";
    }

    TemporaryFolder temporary;
    std::filesystem::path path = temporary.path() / "support" / "app";
    std::filesystem::path outside = temporary.path() / "outside";
    std::vector<std::string> outsideBefore;
    LinuxFileManager files;
    std::unique_ptr<Folder> folder;
};

} // namespace quillon
