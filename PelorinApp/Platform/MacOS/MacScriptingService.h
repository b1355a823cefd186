#pragma once

#include "Platform/ScriptingService.h"

namespace quillon {

class MacScriptingService final : public ScriptingService {
  public:
    [[nodiscard]] std::unique_ptr<Script> compile(std::string_view source) override;
};

} // namespace quillon
