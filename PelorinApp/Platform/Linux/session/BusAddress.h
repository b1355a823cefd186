#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Where a message bus listens on this machine: in the file system, or in Linux's abstract
/// namespace of sockets.
struct BusSocket {
    std::string path;
    bool isAbstract = false;
    bool operator==(const BusSocket&) const = default;
};

/// One of the addresses that a D-Bus address is made of, between semicolons. Nothing when it is
/// none of a socket on this machine.
[[nodiscard]] std::optional<BusSocket> busSocket(std::string_view address);

/// The address of the socket. It names no particular bus, so a new one at the same place has it
/// too.
[[nodiscard]] std::string busAddress(const BusSocket& socket);

/// Whether a bus takes up a conversation there. A stopped one does not, though it lets us connect.
[[nodiscard]] bool busAnswers(const BusSocket& socket, std::chrono::milliseconds patience);

} // namespace quillon
