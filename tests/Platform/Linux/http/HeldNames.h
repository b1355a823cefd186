#pragma once

namespace quillon {

/// Linking HeldNames.cpp puts it in front of the C library's getaddrinfo, so that no test depends
/// on a name server: names under `held.invalid` are resolved only once they are let go, and then,
/// like all under `invalid`, are not found.
class HeldNames {
  public:
    HeldNames();
    HeldNames(const HeldNames&) = delete;
    HeldNames& operator=(const HeldNames&) = delete;

    /// Lets them go, and waits until nobody is held any more.
    ~HeldNames();

    /// How many threads are held now.
    [[nodiscard]] static int held();
};

} // namespace quillon
