#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// Where the settings remember whether a tool is on that has no record.
[[nodiscard]] inline std::string enabledKey(std::string_view toolId) {
    return "HubEnabled." + std::string(toolId);
}

} // namespace quillon
