#pragma once

#include "Platform/EventMonitors.h"

#include <optional>

namespace quillon {

/// The press or release of a button, by the number that applications see, as a listener is told of
/// it. Nothing for one that the user has switched off, and for the release of a wheel's, which is
/// half of a notch.
///
/// A notch is one line, of whatever device: X servers turn the scrolling of wheels and touchpads
/// alike into buttons.
[[nodiscard]] std::optional<MonitoredEvent> monitoredButton(unsigned button, bool isDown);

} // namespace quillon
