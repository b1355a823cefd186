#pragma once

#include "Platform/Bundle.h"

namespace quillon {

class MacBundle final : public Bundle {
  public:
    /// That of the program's information dictionary; the built-in one where there is none, as when
    /// the program runs outside its bundle, or it cannot name a folder.
    [[nodiscard]] std::string identifier() const override;
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override;
};

} // namespace quillon
