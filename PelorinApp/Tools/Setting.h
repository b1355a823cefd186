#pragma once

namespace quillon {

/// Where a tool keeps a setting, and what holds when it is absent.
template <class T>
struct Setting {
    const char* key;
    T fallback;
};

} // namespace quillon
