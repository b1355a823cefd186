#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A desktop entry, as far as starting a program needs it: the keys of its main group.
class DesktopEntry {
  public:
    /// Nothing when a launcher could not read the text either.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view text);

    /// A value with its escape sequences undone, or nothing when there is no such key.
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const;

    /// Nothing when the key is absent or no boolean.
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;

  private:
    std::map<std::string, std::string, std::less<>> values_; // as they are written
};

/// Why a program cannot be named in a desktop entry, for the user, or nothing when it can.
[[nodiscard]] std::optional<std::string> execObstacle(std::string_view program);

/// The value of an Exec key that starts the program, quoted and escaped as it stands in the file.
/// The program must have no execObstacle.
[[nodiscard]] std::string execValue(std::string_view program);

/// The program and its arguments that an Exec text stands for: its quoting undone, without field
/// codes, and without env and what that sets. Empty when no launcher could make sense of it.
[[nodiscard]] std::vector<std::string> execArguments(std::string_view exec);

} // namespace quillon
