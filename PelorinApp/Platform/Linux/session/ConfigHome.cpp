#include "Platform/Linux/session/ConfigHome.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace quillon {

namespace {

std::filesystem::path absoluteFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    std::filesystem::path path = value == nullptr ? "" : value;
    return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path baseFolder(const char* variable, const char* withinHome) {
    if (auto folder = absoluteFromEnvironment(variable); !folder.empty()) {
        return folder;
    }
    if (auto home = absoluteFromEnvironment("HOME"); !home.empty()) {
        return home / withinHome;
    }
    const passwd* user = getpwuid(getuid());
    return std::filesystem::path(user == nullptr ? "/" : user->pw_dir) / withinHome;
}

} // namespace

std::filesystem::path configHome() { return baseFolder("XDG_CONFIG_HOME", ".config"); }

std::filesystem::path dataHome() { return baseFolder("XDG_DATA_HOME", ".local/share"); }

std::vector<std::filesystem::path> systemConfigFolders() {
    const char* value = std::getenv("XDG_CONFIG_DIRS");
    std::string_view names = value == nullptr ? "" : value;
    std::vector<std::filesystem::path> folders;
    while (!names.empty()) {
        const auto end = std::min(names.find(':'), names.size());
        if (const std::filesystem::path folder(names.substr(0, end)); folder.is_absolute()) {
            folders.push_back(folder);
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return folders.empty() ? std::vector<std::filesystem::path>{"/etc/xdg"} : folders;
}

} // namespace quillon
