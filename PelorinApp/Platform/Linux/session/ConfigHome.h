#pragma once

#include <filesystem>

namespace quillon {

/// The folder of the user's configuration files: $XDG_CONFIG_HOME if it is an absolute path, as
/// the XDG base directories demand, else .config in the home folder.
[[nodiscard]] std::filesystem::path configHome();

} // namespace quillon
