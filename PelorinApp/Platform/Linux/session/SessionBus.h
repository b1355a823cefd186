#pragma once

#include <chrono>
#include <filesystem>
#include <string>

class QProcessEnvironment;

namespace quillon {

/// Sees to it that nothing in this process starts a message bus or waits for one that is stuck, as
/// D-Bus libraries do: $DBUS_SESSION_BUS_ADDRESS becomes the address of a bus that answers, or one
/// that leads nowhere. Answers whether there is a bus.
///
/// To be called once, before there are threads and before anything else asks for the bus. Takes no
/// longer than `patience`, and rarely a millisecond.
bool settleSessionBus(std::chrono::milliseconds patience = std::chrono::milliseconds(1500));

/// Whether settleSessionBus() found a bus. It may have gone since.
[[nodiscard]] bool hasSessionBus();

/// Puts the bus into the environment of another program as it was before settleSessionBus().
void restoreSessionBus(QProcessEnvironment& environment);

/// The address of that bus, and of one that takes its place.
[[nodiscard]] std::string sessionBusAddress();

/// The file of the settled bus's socket; empty when it has none.
[[nodiscard]] std::filesystem::path sessionBusSocket();

/// Whether the settled bus answers now.
[[nodiscard]] bool sessionBusAnswers(std::chrono::milliseconds patience);

} // namespace quillon
