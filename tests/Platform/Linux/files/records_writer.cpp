// Saves the records of installed tools as fast as the disk lets it, for tests that kill it.
//
// records_writer FIRST COUNT STEP MICROSECONDS: saves the states FIRST, FIRST + 1, …, COUNT in
// all, three at a time, then waiting for the disk and printing the number of the last. With STEP
// above 0 it kills itself instead of making its STEP-th call to the system that changes a file,
// when that is a write after half of it. With MICROSECONDS above 0 it is killed so much later.

#include "Hub/InstalledToolFile.h"
#include "Platform/Linux/files/LinuxFileManager.h"
#include "Platform/Linux/session/ThreadQueue.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include "../session/SystemCalls.h"
#include "WrittenRecords.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

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

void dieAfter(long microseconds) {
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer{};
    itimerspec once{};
    once.it_value.tv_sec = microseconds / 1000000;
    once.it_value.tv_nsec = microseconds % 1000000 * 1000;
    if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0 ||
        ::timer_settime(timer, 0, &once, nullptr) != 0) {
        std::exit(3);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        return 2;
    }
    const int first = std::atoi(argv[1]);
    const int count = std::atoi(argv[2]);
    if ((stepsLeft = std::atoi(argv[3])) > 0) {
        quillon::setSystemCallHook(dieAtStep);
    }
    if (const long microseconds = std::atol(argv[4]); microseconds > 0) {
        dieAfter(microseconds);
    }
    quillon::SimulatedDesktop desktop;
    quillon::LinuxFileManager files;
    const quillon::HubServices services{desktop.runLoop, desktop.userDefaults.standard(),
                                        desktop.bundle,  desktop.diagnostics,
                                        desktop.urls,    files};
    quillon::InstalledToolFile file(services, std::make_shared<quillon::ThreadQueue>("records"));
    [[maybe_unused]] const auto before = file.load();
    for (int n = first; n < first + count; ++n) {
        file.save(quillon::writtenRecords(n));
        if ((n - first) % 3 != 2 && n + 1 < first + count) {
            continue;
        }
        if (!file.flush()) {
            return 1;
        }
        const std::string line = std::to_string(n) + "\n";
        if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) {
            return 1;
        }
    }
    return 0;
}
