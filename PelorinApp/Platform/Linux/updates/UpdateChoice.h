#pragma once

#include "Platform/Linux/updates/Appcast.h"

namespace quillon {

struct PublishedVersion {
    std::string version; // as people read it
    std::string page;    // an http or https address, or empty
};

/// The newest version that is for this system and for everybody, or nothing.
///
/// An item may have two versions, of the build and for people. The program knows its own as people
/// do, so that is the one to compare; a build number tells apart only items of the same version.
[[nodiscard]] std::optional<PublishedVersion> newestVersion(const Appcast& appcast);

/// The text on one line, without characters that show as nothing or turn the direction of what
/// follows, and of at most `longest` characters.
[[nodiscard]] std::string plainText(std::string_view utf8, int longest);

} // namespace quillon
