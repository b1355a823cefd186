#pragma once

#include "Platform/WindowServer.h"

namespace quillon {

class MacWindowServer final : public WindowServer {
  public:
    std::optional<std::vector<WindowDescription>>
    copyWindowList(WindowListOptions options) override;
};

} // namespace quillon
