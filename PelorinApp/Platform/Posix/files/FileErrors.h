#pragma once

#include "Platform/FileManager.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quillon {

/// What went wrong with a file, in one line, whatever is in its name.
[[nodiscard]] FileError fileError(std::string description);
[[nodiscard]] FileError fileError(std::string_view what, const std::filesystem::path& path,
                                  int error);

} // namespace quillon
