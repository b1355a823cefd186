#include "Hub/ToolMigrationService.h"

#include "Hub/EnabledKey.h"
#include "Platform/Platform.h"

#include <array>
#include <string>

namespace quillon {

namespace {

constexpr const char* doneKey = "HubMigrationV1Done";

struct LegacyFlag {
    const char* legacy;
    const char* moduleId;
};

/// Numbered as the tools once were.
constexpr std::array legacyFlags{
    LegacyFlag{"Tool1Enabled", "tool.windowSwitcher"},
    LegacyFlag{"Tool2Enabled", "tool.mediaControl"},
    LegacyFlag{"Tool3Enabled", "tool.trackpadMiddleClick"},
    LegacyFlag{"Tool4Enabled", "tool.desktopSwitcher"},
    LegacyFlag{"Tool5Enabled", "tool.volumeControl"},
};

bool textIsTrue(std::string_view text) {
    const auto skip = [&text](std::string_view characters) {
        text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    };
    skip(" \t\n\r\v\f");
    if (text.starts_with('+') || text.starts_with('-')) {
        text.remove_prefix(1);
    }
    skip("0");
    return !text.empty() &&
           std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

} // namespace

bool asBool(const DefaultsObject& object) {
    if (const bool* flag = std::get_if<bool>(&object)) {
        return *flag;
    }
    if (const double* number = std::get_if<double>(&object)) {
        return *number != 0;
    }
    const auto* text = std::get_if<std::string>(&object);
    return text != nullptr && textIsTrue(*text);
}

ToolMigrationService& ToolMigrationService::shared() {
    static ToolMigrationService service(Platform::current().userDefaults.standard());
    return service;
}

void ToolMigrationService::migrate() {
    const auto done = defaults_.object(doneKey);
    if (done && asBool(*done)) {
        return;
    }
    for (const auto& flag : legacyFlags) {
        if (const auto stored = defaults_.object(flag.legacy)) {
            defaults_.set(enabledKey(flag.moduleId), asBool(*stored));
        }
    }
    defaults_.set(doneKey, true);
}

} // namespace quillon
