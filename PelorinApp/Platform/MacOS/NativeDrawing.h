#pragma once

#include "Platform/View.h"

namespace quillon {

/// Has the view draw itself, not what lies in it, where the system is drawing just now: in a view
/// whose origin is its top left corner. Does nothing for null.
void drawNatively(const View* view);

} // namespace quillon
