#include "Platform/Linux/session/StandardOutput.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace quillon {

void StandardOutput::line(std::string_view text) {
    std::string whole(text);
    std::replace_if(
        whole.begin(), whole.end(), [](char c) { return c == '\n' || c == '\r' || c == '\0'; },
        ' ');
    whole += '\n';
    const std::scoped_lock lock(mutex_);
    std::fwrite(whole.data(), 1, whole.size(), stdout);
    std::fflush(stdout);
}

} // namespace quillon
