#include "Platform/Linux/http/ThisComputer.h"

#include <algorithm>
#include <string>

#include <arpa/inet.h>

namespace quillon {

namespace {

constexpr in_addr_t loopbackNet = 127;
constexpr unsigned netShift = 24;

bool isLoopback(in_addr_t address) { return (ntohl(address) >> netShift) == loopbackNet; }

bool isLoopback(const in6_addr& address) {
    if (IN6_IS_ADDR_V4MAPPED(&address)) {
        in_addr_t inner = 0;
        std::copy_n(address.s6_addr + sizeof address - sizeof inner, sizeof inner,
                    reinterpret_cast<unsigned char*>(&inner));
        return isLoopback(inner);
    }
    return IN6_IS_ADDR_LOOPBACK(&address);
}

} // namespace

bool isThisComputer(std::string_view host) {
    if (host.starts_with('[') && host.ends_with(']')) {
        host = host.substr(1, host.size() - 2);
    } else if (host.ends_with('.')) {
        host.remove_suffix(1);
    }
    std::string name(host);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (name == "localhost" || name.ends_with(".localhost")) {
        return true;
    }
    in_addr four{};
    in6_addr six{};
    return (inet_pton(AF_INET, name.c_str(), &four) == 1 && isLoopback(four.s_addr)) ||
           (inet_pton(AF_INET6, name.c_str(), &six) == 1 && isLoopback(six));
}

} // namespace quillon
