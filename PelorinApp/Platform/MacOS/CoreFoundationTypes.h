#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {

/// A reference that is released when it goes out of use. May be null.
template <class Ref>
class CfOwned {
  public:
    CfOwned() = default;

    /// Takes over a reference that a "create" or "copy" function has given.
    explicit CfOwned(Ref owned) : ref_(owned) {}

    CfOwned(CfOwned&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CfOwned& operator=(CfOwned&& other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    CfOwned(const CfOwned&) = delete;
    CfOwned& operator=(const CfOwned&) = delete;
    ~CfOwned() {
        if (ref_ != nullptr) {
            CFRelease(ref_);
        }
    }

    /// Keeps alive what somebody else owns.
    [[nodiscard]] static CfOwned retaining(Ref borrowed) {
        if (borrowed != nullptr) {
            CFRetain(borrowed);
        }
        return CfOwned(borrowed);
    }

    [[nodiscard]] Ref get() const { return ref_; }
    explicit operator bool() const { return ref_ != nullptr; }

  private:
    Ref ref_ = nullptr;
};

/// Null when the bytes are not UTF-8.
[[nodiscard]] CfOwned<CFStringRef> cfText(std::string_view utf8);

/// In UTF-8; what cannot be said in it reads as a question mark.
[[nodiscard]] std::string textOf(CFStringRef text);

// What a value read from a collection stands for; nothing when it is absent or of another type.
[[nodiscard]] std::optional<std::string> textIn(CFTypeRef value);
[[nodiscard]] std::optional<bool> booleanIn(CFTypeRef value);

/// Also nothing for a number that has a fraction or does not fit.
[[nodiscard]] std::optional<std::int32_t> integerIn(CFTypeRef value);

[[nodiscard]] inline CFBooleanRef cfBoolean(bool value) {
    return value ? kCFBooleanTrue : kCFBooleanFalse;
}

} // namespace quillon
