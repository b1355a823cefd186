#include "Platform/Posix/StandardOutput.h"

#include <algorithm>
#include <string>

#include <sys/select.h>
#include <unistd.h>

namespace quillon {

namespace {

/// A pipe that takes anything takes at least as much as this at once.
constexpr std::size_t longestLine = 4096;

bool takesMore() {
    // Not poll, which some systems do not have for terminals.
    fd_set outputs;
    FD_ZERO(&outputs);
    FD_SET(STDOUT_FILENO, &outputs);
    timeval atOnce{};
    return ::select(STDOUT_FILENO + 1, nullptr, &outputs, nullptr, &atOnce) > 0;
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
