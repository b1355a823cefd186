#include "Platform/Posix/StandardError.h"

#include <algorithm>
#include <iostream>
#include <string>

namespace quillon {

void StandardError::line(std::string_view text) {
    std::string whole = "quillon: " + std::string(text);
    std::replace_if(
        whole.begin(), whole.end(), [](char c) { return c == '\n' || c == '\r' || c == '\0'; },
        ' ');
    std::cerr << whole + '\n';
}

} // namespace quillon
