#include "Platform/Linux/session/BusAddress.h"

#include "Platform/Posix/files/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillon {

namespace {

constexpr std::string_view unixPrefix = "unix:";
constexpr int hexadecimal = 16;

std::optional<std::string> unescaped(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '%') {
            result += value[i];
            continue;
        }
        unsigned char byte = 0;
        const auto digits = value.substr(i + 1, 2);
        const auto* end = digits.data() + digits.size();
        if (digits.size() != 2 ||
            std::from_chars(digits.data(), end, byte, hexadecimal).ptr != end) {
            return std::nullopt;
        }
        result += static_cast<char>(byte);
        i += 2;
    }
    return result;
}

void appendHexadecimal(std::string& text, char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    text += digits[static_cast<unsigned char>(byte) / hexadecimal];
    text += digits[static_cast<unsigned char>(byte) % hexadecimal];
}

FileDescriptor connected(const BusSocket& where) {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    const std::size_t start = where.isAbstract ? 1 : 0; // abstract names begin with a zero
    if (start + where.path.size() >= sizeof name.sun_path) {
        return {};
    }
    std::memcpy(name.sun_path + start, where.path.data(), where.path.size());
    const std::size_t length = where.isAbstract
                                   ? offsetof(sockaddr_un, sun_path) + start + where.path.size()
                                   : sizeof name;
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // Fails at once also when too many are waiting to be let in.
    if (!socket.isOpen() ||
        ::connect(socket.get(), static_cast<const sockaddr*>(static_cast<const void*>(&name)),
                  static_cast<socklen_t>(length)) != 0) {
        return {};
    }
    return socket;
}

} // namespace

std::optional<BusSocket> busSocket(std::string_view address) {
    if (!address.starts_with(unixPrefix)) {
        return std::nullopt;
    }
    address.remove_prefix(unixPrefix.size());
    while (!address.empty()) {
        const auto end = std::min(address.find(','), address.size());
        const auto pair = address.substr(0, end);
        address.remove_prefix(std::min(end + 1, address.size()));
        const auto equals = std::min(pair.find('='), pair.size());
        const auto key = pair.substr(0, equals);
        if (key == "path" || key == "abstract") {
            auto path = unescaped(pair.substr(std::min(equals + 1, pair.size())));
            return path && !path->empty()
                       ? std::optional(BusSocket{std::move(*path), key == "abstract"})
                       : std::nullopt;
        }
    }
    return std::nullopt;
}

std::string busAddress(const BusSocket& socket) {
    std::string address(unixPrefix);
    address += socket.isAbstract ? "abstract=" : "path=";
    for (const char c : socket.path) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                             (c >= 'a' && c <= 'z') ||
                             std::string_view("-_/.*").find(c) != std::string_view::npos;
        if (isPlain) {
            address += c;
        } else {
            address += '%';
            appendHexadecimal(address, c);
        }
    }
    return address;
}

bool busAnswers(const BusSocket& socket, std::chrono::milliseconds patience) {
    const FileDescriptor bus = connected(socket);
    if (!bus.isOpen()) {
        return false;
    }
    // What every conversation starts with: a zero, and who we are.
    std::string greeting(1, '\0');
    greeting += "AUTH EXTERNAL ";
    for (const char digit : std::to_string(::getuid())) {
        appendHexadecimal(greeting, digit);
    }
    greeting += "\r\n";
    if (::send(bus.get(), greeting.data(), greeting.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(greeting.size())) {
        return false;
    }
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    pollfd waiting{bus.get(), POLLIN, 0};
    int ready = 0;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        ready = ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    } while (ready < 0 && errno == EINTR);
    char answer = 0;
    return ready == 1 && ::recv(bus.get(), &answer, 1, 0) == 1;
}

} // namespace quillon
