#pragma once

namespace quillon {

/// What the running program can be asked to do with a tool.
enum class ToolVerb { enable, disable, install, uninstall };

} // namespace quillon
