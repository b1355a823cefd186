#include "Platform/Linux/session/AutostartLoginItem.h"

#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Linux/session/DesktopEntry.h"
#include "Platform/Posix/files/AtomicFile.h"
#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quillon {

namespace {

constexpr const char* fileName = "com.pelorin.PelorinApp.desktop";
constexpr std::size_t largestFile = std::size_t{1} << 16U;

/// Nothing for what is no ordinary file: reading a pipe would wait for its writer.
std::optional<std::string> read(const std::filesystem::path& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string content(largestFile + 1, '\0');
    std::size_t length = 0;
    while (length < content.size()) {
        const ssize_t got = ::read(file.get(), content.data() + length, content.size() - length);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return std::nullopt;
        }
        if (got == 0) {
            break;
        }
        length += static_cast<std::size_t>(got);
    }
    content.resize(length);
    return length > largestFile ? std::nullopt : std::optional(std::move(content));
}

/// The entry that a session would start, if it would start it.
std::optional<DesktopEntry> startedEntry(const std::filesystem::path& file) {
    const auto content = read(file);
    auto entry = content ? DesktopEntry::parse(*content) : std::nullopt;
    if (!entry || entry->text("Type") != "Application" ||
        entry->boolean("Hidden").value_or(false) ||
        !entry->boolean("X-GNOME-Autostart-enabled").value_or(true)) {
        return std::nullopt;
    }
    return entry;
}

/// What a name without a folder stands for.
std::filesystem::path searched(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        return program;
    }
    const char* path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? "" : path;
    while (!folders.empty()) {
        const auto end = std::min(folders.find(':'), folders.size());
        auto candidate = std::filesystem::path(folders.substr(0, end)) / program;
        if (::access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    return {};
}

} // namespace

AutostartFolders AutostartFolders::ofSession() {
    AutostartFolders folders{configHome() / "autostart", {}};
    for (const auto& folder : systemConfigFolders()) {
        folders.system.push_back(folder / "autostart");
    }
    return folders;
}

AutostartLoginItem::AutostartLoginItem(std::filesystem::path program, AutostartFolders folders)
    : program_(std::move(program)), folders_(std::move(folders)) {}

std::filesystem::path AutostartLoginItem::userFile() const { return folders_.user / fileName; }

std::optional<std::filesystem::path> AutostartLoginItem::systemFile() const {
    std::error_code ignored;
    for (const auto& folder : folders_.system) {
        if (std::filesystem::exists(folder / fileName, ignored)) {
            return folder / fileName;
        }
    }
    return std::nullopt;
}

bool AutostartLoginItem::startsProgram(const std::filesystem::path& file) const {
    const auto entry = startedEntry(file);
    const auto exec = entry ? entry->text("Exec") : std::nullopt;
    const auto arguments = exec ? execArguments(*exec) : std::vector<std::string>();
    if (arguments.empty()) {
        return false;
    }
    std::error_code ignored;
    return arguments.front() == program_ ||
           std::filesystem::equivalent(searched(arguments.front()), program_, ignored);
}

bool AutostartLoginItem::isEnabled() const {
    std::error_code ignored;
    if (std::filesystem::exists(userFile(), ignored)) {
        return startsProgram(userFile());
    }
    const auto file = systemFile();
    return file && startsProgram(*file);
}

std::optional<std::string> AutostartLoginItem::write(bool enabled) const {
    std::string content = "[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Quillon\n"
                          "Comment=Turns screen edges and the trackpad into gestures\n";
    if (!execObstacle(program_.string())) {
        content += "Exec=" + execValue(program_.string()) + "\n";
    }
    content += "Terminal=false\n"
               "StartupNotify=false\n";
    content += enabled ? "X-GNOME-Autostart-enabled=true\n" : "Hidden=true\n";
    if (auto failure = makeFolders(folders_.user)) {
        return failure;
    }
    AtomicFile file(userFile());
    auto failure = file.write(content);
    return failure ? failure : file.commit();
}

std::optional<std::string> AutostartLoginItem::registerService() {
    auto failure = execObstacle(program_.string());
    if (!failure) {
        failure = write(true);
    }
    return failure ? std::optional("Quillon will not start at login: " + *failure) : std::nullopt;
}

std::optional<std::string> AutostartLoginItem::unregisterService() {
    const std::string trouble = "Quillon may still start at login: ";
    const auto file = systemFile();
    if (file && startedEntry(*file)) {
        const auto failure = write(false);
        return failure ? std::optional(trouble + *failure) : std::nullopt;
    }
    if (::unlink(userFile().c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        return trouble + systemError("cannot remove " + userFile().string(), errno);
    }
    return std::nullopt;
}

} // namespace quillon
