#pragma once

#include <compare>
#include <string_view>

namespace quillon {

/// Whether the text begins as versions do: with a digit, or a "v" before one.
[[nodiscard]] bool isVersion(std::string_view text);

/// Orders versions as people count: by whole numbers, so 1.10 is after 1.9, and with zeros where
/// one is shorter, so 1.0 is 1.0.0. From the first letter on it is a pre-release, which comes
/// before the release: 2.0-rc.1 and 2.0b1 before 2.0, and 1.0.1a before 1.0.1. Letters compare
/// without case. What follows a "+" or "(" names a build and does not count. Any text is accepted;
/// one without a number at its front is a pre-release of version 0.
[[nodiscard]] std::weak_ordering compareVersions(std::string_view left, std::string_view right);

} // namespace quillon
