#include "Platform/FileManager.h"

#include <algorithm>

namespace quillon {

bool isEntryName(std::string_view name) {
    constexpr std::size_t longest = 255; // bytes; of every file system in use
    return !name.empty() && name.size() <= longest && name != "." && name != ".." &&
           std::ranges::none_of(name, [](char c) { return c == '/' || c == '\0'; });
}

} // namespace quillon
