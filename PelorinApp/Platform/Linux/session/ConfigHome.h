#pragma once

#include <filesystem>
#include <vector>

namespace quillon {

/// The folder of the user's configuration files: $XDG_CONFIG_HOME if it is an absolute path, as
/// the XDG base directories demand, else .config in the home folder.
[[nodiscard]] std::filesystem::path configHome();

/// The folder of what applications keep for the user: $XDG_DATA_HOME if it is an absolute path,
/// else .local/share in the home folder.
[[nodiscard]] std::filesystem::path dataHome();

/// The folders of the system's configuration files, the most important first: what of
/// $XDG_CONFIG_DIRS is an absolute path, else /etc/xdg.
[[nodiscard]] std::vector<std::filesystem::path> systemConfigFolders();

} // namespace quillon
