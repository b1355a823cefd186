#pragma once

#include "Platform/EventServices.h"

#include <CoreGraphics/CoreGraphics.h>

namespace quillon {

/// The low-level form of an event that only the window toolkit can make. The caller releases it.
/// Null when the system makes none.
[[nodiscard]] CGEventRef makeSystemDefinedEvent(const SystemDefinedEvent& event);

} // namespace quillon
