#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <utility>

namespace quillon {

/// Makes a tool's manager and lets it begin its life, for which it must know who owns it.
template <class Manager, class... More>
std::shared_ptr<Manager> makeManager(Platform& platform, More... more) {
    auto manager = std::make_shared<Manager>(platform, std::move(more)...);
    manager->begin();
    return manager;
}

} // namespace quillon
