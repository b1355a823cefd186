#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

class Script {
  public:
    virtual ~Script() = default;

    /// Runs the script to its end and answers a description of what went wrong, if anything did.
    /// May block: background threads only.
    [[nodiscard]] virtual std::optional<std::string> execute() = 0;
};

/// The system's automation scripts. Any thread.
class ScriptingService {
  public:
    virtual ~ScriptingService() = default;

    /// Null when the source does not compile.
    [[nodiscard]] virtual std::unique_ptr<Script> compile(std::string_view source) = 0;
};

} // namespace quillon
