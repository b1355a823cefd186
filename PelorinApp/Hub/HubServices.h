#pragma once

#include "Platform/Platform.h"

#include <filesystem>
#include <optional>

namespace quillon {

/// What of a platform the hub itself uses, which is there also without a display.
struct HubServices {
    RunLoop& runLoop;
    UserDefaults& defaults; // the standard ones
    Bundle& bundle;
    Diagnostics& diagnostics;
    UrlSession& session;
    FileManager& fileManager;

    [[nodiscard]] static HubServices of(Platform& platform);

    /// Where the hub keeps its files, if there is a place for what applications keep.
    [[nodiscard]] std::optional<std::filesystem::path> supportFolder() const;

    /// The bundle's folder within another.
    [[nodiscard]] std::filesystem::path folderWithin(const std::filesystem::path& parent) const;

    /// A request with the limits that the bundle's configuration sets: HubRequestTimeout, in
    /// seconds, and HubLargestDownload, in bytes.
    [[nodiscard]] UrlRequest request(std::string url, std::size_t usualLimit) const;
};

} // namespace quillon
