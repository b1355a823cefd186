#include "Platform/Linux/session/ConfigHome.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace quillon {

namespace {

std::filesystem::path absoluteFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    std::filesystem::path path = value == nullptr ? "" : value;
    return path.is_absolute() ? path : std::filesystem::path();
}

} // namespace

std::filesystem::path configHome() {
    if (auto folder = absoluteFromEnvironment("XDG_CONFIG_HOME"); !folder.empty()) {
        return folder;
    }
    if (auto home = absoluteFromEnvironment("HOME"); !home.empty()) {
        return home / ".config";
    }
    const passwd* user = getpwuid(getuid());
    return std::filesystem::path(user == nullptr ? "/" : user->pw_dir) / ".config";
}

} // namespace quillon
