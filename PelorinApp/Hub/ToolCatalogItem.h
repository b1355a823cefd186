#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A tool that the hub offers.
struct ToolCatalogItem {
    std::string id;
    std::string name;
    std::string subtitle;
    std::string icon; // a symbol's name
    std::string version;
    std::string minHubVersion;                             // carried, not enforced
    std::optional<std::string> downloadURL = std::nullopt; // of the package, where there is one
    std::optional<std::string> sha256 = std::nullopt;      // of the package, in hexadecimal

    bool operator==(const ToolCatalogItem&) const = default;
};

using ToolCatalog = std::vector<ToolCatalogItem>;

/// What the hub offers when no server says anything else, in the order in which people see it.
[[nodiscard]] const ToolCatalog& builtInCatalog();

/// A JSON array of objects. What is optional is left out where it is missing.
[[nodiscard]] std::string encodeCatalog(const ToolCatalog& catalog);

/// All or nothing: one object that lacks a required field, or has one of another type, spoils the
/// document. Fields that we do not know are ignored.
[[nodiscard]] std::optional<ToolCatalog> decodeCatalog(std::string_view document);

} // namespace quillon
