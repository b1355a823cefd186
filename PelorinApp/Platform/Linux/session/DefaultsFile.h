#pragma once

#include "Platform/Linux/session/DefaultsDocument.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace quillon {

/// Keys with their new values; nothing removes the key.
using DefaultsChanges = std::map<std::string, std::optional<DefaultsObject>, std::less<>>;

/// The file of a store of settings, which other programs may write as well. Calls must not overlap.
class DefaultsFile {
  public:
    /// Larger files are not read, and not written.
    static constexpr std::size_t largestSize = std::size_t{4} << 20U;

    explicit DefaultsFile(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    struct Loaded {
        DefaultsDocument document;
        std::optional<std::string> warning;
    };
    /// What the file holds, nothing when there is none. A file that cannot be used is left as it
    /// is and warned of.
    [[nodiscard]] Loaded load();

    struct Updated {
        std::optional<std::string> failure; // nothing was changed
        std::optional<std::string> warning;
    };
    /// Makes the changes in the file as it is now. A file that cannot be used is kept under
    /// another name, and what was last read or written here takes its place. May block.
    [[nodiscard]] Updated update(const DefaultsChanges& changes);

  private:
    std::optional<std::string> replace(const std::filesystem::path& target,
                                       const DefaultsChanges& changes, Updated& updated);

    std::filesystem::path path_;
    DefaultsDocument intact_;
    bool damageKnown_ = false;
};

} // namespace quillon
