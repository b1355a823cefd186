#pragma once

#include "Platform/Button.h"

#include <memory>
#include <optional>
#include <string>

namespace quillon {

/// The front-most button of the tree at a place of the root view, in points from its top left
/// corner; without a place the front-most button there is. Null when there is none.
[[nodiscard]] std::shared_ptr<Button> buttonAt(const std::shared_ptr<View>& root,
                                               std::optional<Point> place);

/// The tool tip of the front-most view of the tree that has one, the root last.
[[nodiscard]] std::string toolTipOf(const View& root);

} // namespace quillon
