#include "Platform/Linux/x11/Watchdog.h"

#include <array>
#include <csignal>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every header has it

namespace quillon {

namespace {

/// The process, or -1. A session of its own: what stops or interrupts the program's terminal must
/// not reach it.
pid_t spawn(const std::string& program, int socket, xcb_window_t window) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, socket, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::string name = program;
    std::string number = std::to_string(window);
    std::array<char*, 3> arguments{name.data(), number.data(), nullptr};
    pid_t process = -1;
    if (posix_spawn(&process, program.c_str(), &files, &attributes, arguments.data(), environ) !=
        0) {
        process = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return process;
}

} // namespace

std::unique_ptr<Watchdog> Watchdog::start(const std::filesystem::path& program,
                                          xcb_window_t window) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return nullptr;
    }
    FileDescriptor ours(ends[0]);
    pid_t process = -1;
    {
        const FileDescriptor theirs(ends[1]); // closed on this side, so that we see its end
        process = spawn(program, theirs.get(), window);
    }
    if (process < 0) {
        return nullptr;
    }
    std::unique_ptr<Watchdog> watchdog(new Watchdog(process, std::move(ours)));
    return watchdog->awaitReady() ? std::move(watchdog) : nullptr;
}

bool Watchdog::awaitReady() const {
    constexpr int limit = 1000; // milliseconds
    pollfd source{socket_.get(), POLLIN, 0};
    char answer = 0;
    return poll(&source, 1, limit) == 1 && recv(socket_.get(), &answer, 1, 0) == 1 &&
           answer == watchdogReady;
}

Watchdog::~Watchdog() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

bool Watchdog::tell(const WatchdogMessage& message) {
    const auto now = Clock::now();
    if (message == said_ && now < nextTell()) {
        return true;
    }
    said_ = message;
    saidAt_ = now;
    // One that does not read is none either.
    return send(socket_.get(), &message, sizeof message, MSG_NOSIGNAL | MSG_DONTWAIT) ==
           sizeof message;
}

Watchdog::Clock::time_point Watchdog::nextTell() const {
    return said_.isHolding != 0 ? saidAt_ + heartbeatInterval : Clock::time_point::max();
}

} // namespace quillon
