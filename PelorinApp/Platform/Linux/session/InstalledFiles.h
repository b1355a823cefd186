#pragma once

#include <filesystem>
#include <string_view>

namespace quillon {

/// The program of this process, also when it has been replaced since it was started.
[[nodiscard]] std::filesystem::path thisProgram();

/// A program that this one starts: where programs of that kind are installed, or else beside this
/// one, as a build leaves them.
[[nodiscard]] std::filesystem::path helperProgram(std::string_view name);

/// A library that the program opens when it needs it: the same for libraries.
[[nodiscard]] std::filesystem::path privateLibrary(std::string_view name);

/// A file that the program reads: the same for shared files.
[[nodiscard]] std::filesystem::path sharedFile(std::string_view name);

} // namespace quillon
