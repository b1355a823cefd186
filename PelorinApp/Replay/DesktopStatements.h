#pragma once

#include "Replay/StatementReader.h"

namespace quillon {

/// The arguments of statements that describe the desktop at the start and, with a time, how it
/// changes.
[[nodiscard]] TrustAnswer readTrust(StatementReader& reader);
[[nodiscard]] RestingContacts readContacts(StatementReader& reader);
[[nodiscard]] DeviceChange readDevice(StatementReader& reader);
[[nodiscard]] FrontApplication readFront(StatementReader& reader);
[[nodiscard]] TraceWindow readWindow(StatementReader& reader);

} // namespace quillon
