#include "Platform/Linux/session/DetachedProgram.h"

#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon {

namespace {

/// How the program is to be started; made before the fork, after which no memory may be asked for.
class Arrangement {
  public:
    Arrangement() {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                   POSIX_SPAWN_SETSID);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawn_file_actions_init(&files_);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&files_, standard, "/dev/null", O_RDWR, 0);
        }
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
    }
    Arrangement(const Arrangement&) = delete;
    Arrangement& operator=(const Arrangement&) = delete;
    ~Arrangement() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&attributes_);
    }

    /// Answers the error, 0 for none.
    [[nodiscard]] int spawn(char* const* words, char* const* environment) const {
        pid_t ignored = 0;
        return posix_spawnp(&ignored, words[0], &files_, &attributes_, words, environment);
    }

  private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

std::optional<std::string> startDetached(std::vector<std::string> words,
                                         std::vector<std::string> environment) {
    const std::string what = "cannot start " + words.front();
    const auto wordPointers = pointersTo(words);
    const auto environmentPointers = pointersTo(environment);
    const Arrangement arrangement;
    // By way of a process that ends at once, so that its end is not ours to wait for.
    const pid_t between = ::fork();
    if (between == 0) {
        ::_exit(arrangement.spawn(wordPointers.data(), environmentPointers.data()));
    }
    if (between < 0) {
        return systemError(what, errno);
    }
    int status = 0;
    while (::waitpid(between, &status, 0) < 0 && errno == EINTR) {
    }
    const int error = WIFEXITED(status) ? WEXITSTATUS(status) : ECHILD;
    return error == 0 ? std::nullopt : std::optional(systemError(what, error));
}

} // namespace quillon
