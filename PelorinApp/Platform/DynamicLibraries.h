#pragma once

#include <memory>
#include <string_view>

namespace quillon {

/// A library that was loaded at run time. Letting go of it closes it.
class DynamicLibrary {
  public:
    virtual ~DynamicLibrary() = default;

    /// The address of an exported symbol, null when there is none of this name.
    [[nodiscard]] virtual void* resolve(const char* symbol) const = 0;
};

class DynamicLibraries {
  public:
    virtual ~DynamicLibraries() = default;

    /// All symbols that the library needs are bound at once. Null when that fails.
    ///
    /// `path` names a library of macOS; another system opens the one of its own that exports the
    /// same.
    [[nodiscard]] virtual std::unique_ptr<DynamicLibrary> open(std::string_view path) = 0;
};

} // namespace quillon
