#include "Platform/Simulated/SimulatedFileManager.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace fs = std::filesystem;

namespace {

bool isWithin(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
           folder.end();
}

} // namespace

class SimulatedFileManager::SimulatedFolder final : public Folder {
  public:
    SimulatedFolder(SimulatedFileManager& files, fs::path path)
        : files_(files), path_(std::move(path)) {}

    [[nodiscard]] FileResult<std::unique_ptr<Folder>> makeFolder(std::string_view name) override {
        const fs::path path = path_ / name;
        if (!isEntryName(name) || (exists(name) && !files_.isFolder(path))) {
            return FileError{"cannot make the folder " + path.string()};
        }
        return files_.makeFolder(path);
    }

    [[nodiscard]] bool exists(std::string_view name) override {
        return isEntryName(name) && files_.entries.contains(path_ / name);
    }

    [[nodiscard]] FileResult<std::string> read(std::string_view name,
                                               std::size_t largest) override {
        auto content = isEntryName(name) ? files_.content(path_ / name) : std::nullopt;
        if (!content || content->size() > largest) {
            return FileError{"cannot read " + (path_ / name).string()};
        }
        return std::move(*content);
    }

    [[nodiscard]] std::optional<FileError> write(std::string_view name,
                                                 std::string_view content) override {
        if (auto error = refused(name); error || files_.isFolder(path_ / name)) {
            return error ? error : FileError{(path_ / name).string() + " is a folder"};
        }
        files_.put(path_ / name, {Kind::file, std::string(content)});
        ++files_.writes;
        return std::nullopt;
    }

    [[nodiscard]] std::optional<FileError> rename(std::string_view name,
                                                  std::string_view newName) override {
        return copy(name, newName, true);
    }

    [[nodiscard]] std::optional<FileError> keep(std::string_view name,
                                                std::string_view keptName) override {
        return exists(keptName) ? FileError{"there is " + (path_ / keptName).string() + " already"}
                                : copy(name, keptName, files_.isFolder(path_ / name));
    }

    [[nodiscard]] std::optional<FileError> remove(std::string_view name) override {
        if (auto error = refused(name)) {
            return error;
        }
        std::erase_if(files_.entries, [gone = path_ / name](const auto& entry) {
            return isWithin(entry.first, gone);
        });
        return std::nullopt;
    }

  private:
    [[nodiscard]] std::optional<FileError> refused(std::string_view name) const {
        if (!isEntryName(name)) {
            return FileError{"this cannot be the name of a file"};
        }
        return files_.failure ? std::optional(FileError{*files_.failure}) : std::nullopt;
    }

    std::optional<FileError> copy(std::string_view name, std::string_view newName, bool moves) {
        for (const auto& given : {name, newName}) {
            if (auto error = refused(given)) {
                return error;
            }
        }
        const fs::path from = path_ / name;
        const fs::path to = path_ / newName;
        if (!files_.entries.contains(from)) {
            return FileError{"there is no " + from.string()};
        }
        if (files_.isFolder(to)) {
            return FileError{to.string() + " is a folder"};
        }
        const auto all = files_.entries; // with what lies within, if it is a folder
        for (const auto& [path, entry] : all) {
            if (isWithin(path, from)) {
                const fs::path rest = path.lexically_relative(from);
                files_.entries.insert_or_assign(rest == "." ? to : to / rest, entry);
                if (moves) {
                    files_.entries.erase(path);
                }
            }
        }
        return std::nullopt;
    }

    SimulatedFileManager& files_;
    fs::path path_;
};

FileResult<std::unique_ptr<Folder>> SimulatedFileManager::makeFolder(const fs::path& path) {
    if (!isFolder(path)) {
        if (failure) {
            return FileError{*failure};
        }
        if (entries.contains(path)) {
            return FileError{path.string() + " is no folder"};
        }
    }
    put(path, {Kind::folder});
    return openFolder(path);
}

FileResult<std::unique_ptr<Folder>> SimulatedFileManager::openFolder(const fs::path& path) {
    if (!isFolder(path)) {
        return FileError{"there is no folder " + path.string()};
    }
    return std::make_unique<SimulatedFolder>(*this, path);
}

bool SimulatedFileManager::isFolder(const fs::path& path) const {
    const auto found = entries.find(path);
    return found != entries.end() && found->second.kind == Kind::folder;
}

std::optional<std::string> SimulatedFileManager::content(const fs::path& path) const {
    const auto found = entries.find(path);
    return found != entries.end() && found->second.kind == Kind::file
               ? std::optional(found->second.content)
               : std::nullopt;
}

void SimulatedFileManager::put(const fs::path& path, Entry entry) {
    for (fs::path above = path.parent_path(); above.has_relative_path();
         above = above.parent_path()) {
        entries.try_emplace(above, Entry{Kind::folder});
    }
    entries.insert_or_assign(path, std::move(entry));
}

} // namespace quillon
