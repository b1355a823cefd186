#include "Platform/Linux/session/StandardOutput.h"

#include <algorithm>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace quillon {

namespace {

/// A pipe that takes anything takes at least as much as this at once.
constexpr std::size_t longestLine = 4096;

bool takesMore() {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return ::poll(&output, 1, 0) > 0 && (output.revents & POLLOUT) != 0;
}

} // namespace

void StandardOutput::line(std::string_view text) {
    std::string whole(text.substr(0, longestLine - 1));
    std::replace_if(
        whole.begin(), whole.end(), [](char c) { return c == '\n' || c == '\r' || c == '\0'; },
        ' ');
    whole += '\n';
    const std::scoped_lock lock(mutex_);
    if (takesMore()) {
        // What cannot be written is lost: there is nobody to be told.
        [[maybe_unused]] const auto written = ::write(STDOUT_FILENO, whole.data(), whole.size());
    }
}

} // namespace quillon
