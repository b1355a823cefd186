#include "Platform/Linux/session/InstalledFiles.h"

#include <string>
#include <system_error>

namespace quillon {

namespace {

std::filesystem::path installedOrBeside(std::string_view folder, std::string_view name) {
    std::error_code failed;
    const auto beside = thisProgram().parent_path();
    const auto installed = beside / folder / name;
    return std::filesystem::exists(installed, failed) ? installed : beside / name;
}

} // namespace

std::filesystem::path thisProgram() {
    std::error_code failed;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", failed);
    // How the kernel marks a file that is gone, as the old one is when a new version takes its
    // place.
    constexpr std::string_view mark = " (deleted)";
    if (path.ends_with(mark) && !std::filesystem::exists(path, failed)) {
        path.resize(path.size() - mark.size());
    }
    return path;
}

std::filesystem::path helperProgram(std::string_view name) {
    return installedOrBeside("../libexec/quillon", name);
}

std::filesystem::path privateLibrary(std::string_view name) {
    return installedOrBeside("../lib/quillon", name);
}

std::filesystem::path sharedFile(std::string_view name) {
    return installedOrBeside("../share/quillon", name);
}

} // namespace quillon
