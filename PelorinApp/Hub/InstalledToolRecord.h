#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// That a tool is installed, and how.
struct InstalledToolRecord {
    std::string id;
    std::string version;
    std::chrono::sys_seconds installedAt;
    bool isEnabled = false;

    /// A package was downloaded and verified; otherwise the tool came without one.
    bool isDownloaded = false;

    bool operator==(const InstalledToolRecord&) const = default;
};

using InstalledTools = std::vector<InstalledToolRecord>;

/// A JSON array of objects with the fields in order, pretty-printed.
[[nodiscard]] std::string encodeRecords(const InstalledTools& records);

/// All or nothing: one object that lacks a field, or has one of another type, spoils the document.
/// Fields that we do not know are ignored.
[[nodiscard]] std::optional<InstalledTools> decodeRecords(std::string_view document);

/// The moment as people's and other programs' JSON has it: 2024-05-01T09:30:00Z.
[[nodiscard]] std::string internetDateTime(std::chrono::sys_seconds moment);

/// The moment that an internet date and time names, whole seconds only; other zones than UTC are
/// understood. Nothing when it is none.
[[nodiscard]] std::optional<std::chrono::sys_seconds> parseInternetDateTime(std::string_view text);

} // namespace quillon
