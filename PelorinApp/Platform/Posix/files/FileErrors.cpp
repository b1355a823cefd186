#include "Platform/Posix/files/FileErrors.h"

#include "Platform/Posix/files/FileCalls.h"

#include <algorithm>
#include <utility>

namespace quillon {

FileError fileError(std::string description) {
    std::ranges::replace_if(
        description,
        [](char c) {
            constexpr char deleteCharacter = '\x7f';
            return static_cast<unsigned char>(c) < ' ' || c == deleteCharacter;
        },
        '?');
    return {std::move(description)};
}

FileError fileError(std::string_view what, const std::filesystem::path& path, int error) {
    return fileError(systemError(std::string(what) + " " + path.string(), error));
}

} // namespace quillon
