#pragma once

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillon {

/// A program that writes to the disk, running: it says the number of each write that is there.
class WriterProgram {
  public:
    /// The program and its arguments.
    explicit WriterProgram(std::vector<std::string> words) {
        int ends[2];
        if (pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        acknowledgements_ = ends[0];
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (auto& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        posix_spawn_file_actions_addclose(&actions, ends[1]);
        const int error =
            posix_spawn(&pid_, arguments.front(), &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        if (error != 0) {
            throw std::runtime_error("cannot run " + words.front());
        }
    }
    WriterProgram(const WriterProgram&) = delete;
    WriterProgram& operator=(const WriterProgram&) = delete;
    ~WriterProgram() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            wait();
        }
        close(acknowledgements_);
    }

    /// Waits for the next write that the program says is on the disk; 0 when it has ended.
    int nextAcknowledged() {
        std::string number;
        char c = 0;
        while (read(acknowledgements_, &c, 1) == 1) {
            if (c == '\n') {
                return std::atoi(number.c_str());
            }
            number += c;
        }
        return 0;
    }

    /// Waits for the program's end and answers its status.
    int wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = -1;
        return status;
    }

  private:
    pid_t pid_ = -1;
    int acknowledgements_ = -1;
};

} // namespace quillon
