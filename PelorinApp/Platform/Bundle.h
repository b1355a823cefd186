#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// The application as it is installed: its identity and its configuration values.
class Bundle {
  public:
    virtual ~Bundle() = default;

    /// Names the application's folders: isEntryName() holds for it.
    [[nodiscard]] virtual std::string identifier() const = 0;

    /// A text of the information dictionary, or nothing when it holds no text under that key.
    [[nodiscard]] virtual std::optional<std::string> infoString(std::string_view key) const = 0;
};

} // namespace quillon
