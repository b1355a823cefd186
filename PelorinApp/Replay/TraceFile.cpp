#include "Replay/TraceFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace quillon {

namespace {

constexpr std::size_t largestTrace = std::size_t{16} * 1024 * 1024;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

TraceFileError systemError() { return {std::generic_category().message(errno)}; }

} // namespace

std::variant<std::string, TraceFileError> readTraceFile(const std::string& path) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        return systemError();
    }
    std::string text;
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        text.append(block.data(), count);
        if (text.size() > largestTrace) {
            return TraceFileError{"larger than 16 MiB"};
        }
    }
    // A directory opens like a file, but the first read of it fails.
    return std::ferror(file.get()) != 0 ? std::variant<std::string, TraceFileError>(systemError())
                                        : std::move(text);
}

} // namespace quillon
