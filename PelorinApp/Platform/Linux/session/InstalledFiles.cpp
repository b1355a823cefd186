#include "Platform/Linux/session/InstalledFiles.h"

#include <system_error>

namespace quillon {

namespace {

std::filesystem::path installedOrBeside(std::string_view folder, std::string_view name) {
    std::error_code failed;
    const auto beside = std::filesystem::read_symlink("/proc/self/exe", failed).parent_path();
    const auto installed = beside / folder / name;
    return std::filesystem::exists(installed, failed) ? installed : beside / name;
}

} // namespace

std::filesystem::path helperProgram(std::string_view name) {
    return installedOrBeside("../libexec/quillon", name);
}

std::filesystem::path sharedFile(std::string_view name) {
    return installedOrBeside("../share/quillon", name);
}

} // namespace quillon
