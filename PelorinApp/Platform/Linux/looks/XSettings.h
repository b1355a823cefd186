#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillon {

/// What a desktop's settings manager tells all programs, as far as it is a number or a text.
class XSettings {
  public:
    /// Of bytes that stop making sense, what came before that counts.
    static XSettings parse(std::string_view bytes);

    [[nodiscard]] std::optional<std::int32_t> number(std::string_view name) const;
    [[nodiscard]] std::optional<std::string> text(std::string_view name) const;

  private:
    std::map<std::string, std::variant<std::int32_t, std::string>, std::less<>> values_;
};

} // namespace quillon
