#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillon {

/// One download of an item. Texts that the feed does not have are empty.
struct AppcastEnclosure {
    std::string version;
    std::string shortVersion;
    std::optional<std::string> os;
};

struct AppcastItem {
    std::vector<AppcastEnclosure> enclosures;
    std::string version;
    std::string shortVersion;
    std::string link;
    std::string releaseNotesLink;
    bool isOnChannel = false; // only for those who chose that channel
};

/// What a feed of versions says, as it says it: nothing in it is to be trusted.
struct Appcast {
    std::string link;
    std::vector<AppcastItem> items;
};

/// Why a feed cannot be read: plain words that complete "The update feed could not be read: ".
struct FeedFailure {
    std::string reason;
};

/// Reads an RSS 2.0 feed whose items have a version: attributes of the enclosure, or elements. They
/// count by their local names, since feeds differ in the namespace; RSS's own elements only in that
/// of the root, or a link of another vocabulary would be taken for the item's. All or nothing: a
/// feed that is cut off could lack the newest item.
[[nodiscard]] std::variant<Appcast, FeedFailure> parseAppcast(std::string_view bytes);

} // namespace quillon
