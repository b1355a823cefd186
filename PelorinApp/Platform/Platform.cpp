#include "Platform/Platform.h"

#include <cstdlib>

namespace quillon {

namespace {
Platform* currentPlatform = nullptr;
} // namespace

Platform& Platform::current() {
    if (currentPlatform == nullptr) {
        std::abort();
    }
    return *currentPlatform;
}

bool Platform::isThere() { return currentPlatform != nullptr; }

void Platform::setCurrent(Platform* platform) { currentPlatform = platform; }

} // namespace quillon
