// Stores settings as fast as the disk lets it, for tests that run several writers or kill one.
//
// defaults_writer FILE PREFIX KEYS COUNT [STEP]: writes the keys PREFIX0, PREFIX1, … in turn,
// COUNT times in all, each time waiting for the disk and then printing the number of the write.
// With STEP above 0 it kills itself instead of making its STEP-th call to the system, when that is
// a write after half of it.

#include "Platform/Linux/session/FileUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include "SystemCalls.h"
#include "WrittenValue.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

class StandardError final : public quillon::Diagnostics {
  public:
    void line(std::string_view text) override {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    }
};

std::atomic<int> stepsLeft = 0;

int dieAtStep(const quillon::SystemCall& call) {
    if (call.fd != STDOUT_FILENO && --stepsLeft == 0) {
        if (call.name == "write") {
            ::syscall(SYS_write, call.fd, call.data.data(), call.data.size() / 2);
        }
        ::raise(SIGKILL);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        return 2;
    }
    const std::string prefix = argv[2];
    const int keys = std::atoi(argv[3]);
    const int count = std::atoi(argv[4]);
    if (argc > 5 && std::atoi(argv[5]) > 0) {
        stepsLeft = std::atoi(argv[5]);
        quillon::setSystemCallHook(dieAtStep);
    }

    StandardError diagnostics;
    quillon::VirtualRunLoop runLoop; // never runs
    quillon::FileUserDefaults defaults(argv[1], runLoop, diagnostics);
    for (int n = 1; n <= count; ++n) {
        defaults.set(prefix + std::to_string(n % keys), quillon::writtenValue(n));
        // Others may hold the lock for long on a busy machine.
        for (int attempt = 0; !defaults.flush(); ++attempt) {
            if (attempt == 10) {
                return 1;
            }
        }
        const std::string line = std::to_string(n) + "\n";
        if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) {
            return 1;
        }
    }
    return 0;
}
