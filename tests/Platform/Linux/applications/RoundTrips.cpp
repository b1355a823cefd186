#include "RoundTrips.h"

#include <atomic>
#include <ctime>

#include <poll.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::atomic<bool> hasWritten = false;
std::atomic<int> count = 0;

} // namespace

namespace quillon {

int roundTrips() { return count; }

} // namespace quillon

// These stand in front of the C library's. Its headers do not name the parameters so that they
// could be used.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

ssize_t writev(int fd, const iovec* parts, int number) {
    hasWritten = true;
    return ::syscall(SYS_writev, fd, parts, number);
}

// The compiler holds poll itself for a function that only writes to the descriptors.
int pollDescriptors(pollfd* descriptors, nfds_t number, int milliseconds) __asm__("poll");
int pollDescriptors(pollfd* descriptors, nfds_t number, int milliseconds) {
    if (number == 1 && descriptors->events == POLLIN && hasWritten.exchange(false)) {
        ++count;
    }
    timespec time{milliseconds / 1000, milliseconds % 1000 * 1000000L};
    return static_cast<int>(
        ::syscall(SYS_ppoll, descriptors, number, milliseconds < 0 ? nullptr : &time, nullptr, 0));
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
