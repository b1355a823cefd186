#include "Platform/Linux/session/WakeUp.h"

#include <cerrno>
#include <cstdint>
#include <system_error>

#include <sys/eventfd.h>
#include <unistd.h>

namespace quillon {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

WakeUp::~WakeUp() { close(descriptor_); }

void WakeUp::wake() const {
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then the reader is awake already.
    [[maybe_unused]] const auto written = write(descriptor_, &one, sizeof one);
}

void WakeUp::clear() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(descriptor_, &count, sizeof count);
}

} // namespace quillon
