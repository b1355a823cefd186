#include "Platform/Linux/keys/FolderWatch.h"

#include <array>

#include <sys/inotify.h>

namespace quillon {

FolderWatch::FolderWatch(const std::filesystem::path& folder) {
    FileDescriptor watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch.isOpen() &&
        inotify_add_watch(watch.get(), folder.c_str(), IN_CREATE | IN_MOVED_TO) >= 0) {
        descriptor_ = std::move(watch);
    }
}

void FolderWatch::clear() const {
    alignas(inotify_event) std::array<char, 4096> events{};
    while (::read(descriptor_.get(), events.data(), events.size()) > 0) {
    }
}

} // namespace quillon
