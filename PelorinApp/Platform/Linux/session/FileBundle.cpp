#include "Platform/Linux/session/FileBundle.h"

#include "Platform/FileManager.h"
#include "Platform/Linux/session/InstalledFiles.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>

namespace quillon {

namespace {

constexpr const char* identifierKey = "identifier";
constexpr const char* builtInIdentifier = "com.pelorin.PelorinApp";

std::filesystem::path findInfoFile() {
    if (const char* named = std::getenv("QUILLON_INFO"); named != nullptr && *named != '\0') {
        return named;
    }
    return sharedFile("Info.json");
}

} // namespace

FileBundle::FileBundle(Diagnostics& diagnostics) : FileBundle(findInfoFile(), diagnostics) {}

FileBundle::FileBundle(const std::filesystem::path& file, Diagnostics& diagnostics) {
    std::ifstream in(file);
    const auto document = nlohmann::json::parse(in, nullptr, false);
    if (!document.is_object()) {
        diagnostics.line("⚠️ " + file.string() +
                         " is missing or is no JSON object; using built-in values");
        return;
    }
    for (const auto& [key, value] : document.items()) {
        if (value.is_string()) {
            info_.emplace(key, value.get<std::string>());
        }
    }
    if (const auto named = info_.find(identifierKey);
        named != info_.end() && !isEntryName(named->second)) {
        diagnostics.line("⚠️ The identifier in " + file.string() +
                         " cannot be the name of a folder; using " + builtInIdentifier);
        info_.erase(named);
    }
}

std::string FileBundle::identifier() const {
    return infoString(identifierKey).value_or(builtInIdentifier);
}

std::optional<std::string> FileBundle::infoString(std::string_view key) const {
    const auto found = info_.find(key);
    return found == info_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace quillon
