#include "Platform/Linux/session/SessionBus.h"

#include "Platform/Linux/session/BusAddress.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

namespace quillon {

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* nowhere = "disabled:"; // a transport that no library knows

struct Settled {
    bool isDone = false;
    std::optional<std::string> before; // the variable
    std::string address;               // empty: no bus
};

Settled& settled() {
    static Settled state;
    return state;
}

std::string busOfRuntimeFolder() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder != '/') {
        return {};
    }
    const auto socket = std::filesystem::path(folder) / "bus";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? busAddress({socket.string()})
                                                       : std::string();
}

/// Addresses that make libraries start a program of their own.
bool startsSomething(std::string_view address) {
    return address.starts_with("autolaunch:") || address.starts_with("unixexec:");
}

/// Other transports cannot be tried here; whoever has set them up knows what he does.
bool isUsable(std::string_view address, std::chrono::milliseconds patience) {
    const auto socket = busSocket(address);
    return socket ? busAnswers(*socket, patience)
                  : !address.empty() && !address.starts_with("disabled:") &&
                        !address.starts_with("unix:") && !startsSomething(address);
}

/// The first of the addresses that can be used, empty when none can.
std::string firstUsable(std::string_view addresses, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!addresses.empty()) {
        const auto end = std::min(addresses.find(';'), addresses.size());
        const auto address = addresses.substr(0, end);
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (isUsable(address, left)) {
            const auto socket = busSocket(address);
            return socket ? busAddress(*socket) : std::string(address);
        }
        addresses.remove_prefix(std::min(end + 1, addresses.size()));
    }
    return {};
}

} // namespace

bool settleSessionBus(std::chrono::milliseconds patience) {
    Settled& state = settled();
    if (!state.isDone) {
        state.isDone = true;
        if (const char* value = std::getenv(variable)) {
            state.before = value;
        }
        const bool isNamed = state.before && !state.before->empty();
        state.address = firstUsable(isNamed ? *state.before : busOfRuntimeFolder(), patience);
        ::setenv(variable, state.address.empty() ? nowhere : state.address.c_str(), 1);
    }
    return hasSessionBus();
}

bool hasSessionBus() { return !settled().address.empty(); }

void restoreSessionBus(QProcessEnvironment& environment) {
    const Settled& state = settled();
    if (!state.isDone) {
        return;
    }
    if (state.before) {
        environment.insert(variable, QString::fromLocal8Bit(state.before->c_str()));
    } else {
        environment.remove(variable);
    }
}

std::string sessionBusAddress() { return settled().address; }

std::filesystem::path sessionBusSocket() {
    const auto socket = busSocket(settled().address);
    return socket && !socket->isAbstract ? std::filesystem::path(socket->path)
                                         : std::filesystem::path();
}

bool sessionBusAnswers(std::chrono::milliseconds patience) {
    return isUsable(settled().address, patience);
}

} // namespace quillon
