#include "Hub/ToolCatalogItem.h"

#include "Hub/FlatObjects.h"

#include <nlohmann/json.hpp>

namespace quillon {

namespace {

constexpr const char* builtInVersion = "1.0.0";

ToolCatalogItem builtIn(std::string id, std::string name, std::string subtitle, std::string icon) {
    return {.id = std::move(id),
            .name = std::move(name),
            .subtitle = std::move(subtitle),
            .icon = std::move(icon),
            .version = builtInVersion,
            .minHubVersion = builtInVersion};
}

struct RequiredField {
    const char* key;
    std::string ToolCatalogItem::*value;
};
constexpr RequiredField requiredFields[] = {
    {"id", &ToolCatalogItem::id},
    {"name", &ToolCatalogItem::name},
    {"subtitle", &ToolCatalogItem::subtitle},
    {"icon", &ToolCatalogItem::icon},
    {"version", &ToolCatalogItem::version},
    {"minHubVersion", &ToolCatalogItem::minHubVersion},
};

struct OptionalField {
    const char* key;
    std::optional<std::string> ToolCatalogItem::*value;
};
constexpr OptionalField optionalFields[] = {
    {"downloadURL", &ToolCatalogItem::downloadURL},
    {"sha256", &ToolCatalogItem::sha256},
};

/// False for a value that is neither a text nor null.
bool takeOptional(const FlatObject& object, const char* key, std::optional<std::string>& target) {
    const FlatValue* value = object.find(key);
    if (value == nullptr || std::holds_alternative<std::nullptr_t>(*value)) {
        return true;
    }
    std::string text;
    if (!object.take(key, text)) {
        return false;
    }
    target = std::move(text);
    return true;
}

std::optional<ToolCatalogItem> decodeItem(const FlatObject& object) {
    ToolCatalogItem item;
    for (const auto& field : requiredFields) {
        if (!object.take(field.key, item.*field.value)) {
            return std::nullopt;
        }
    }
    for (const auto& field : optionalFields) {
        if (!takeOptional(object, field.key, item.*field.value)) {
            return std::nullopt;
        }
    }
    return item;
}

} // namespace

const ToolCatalog& builtInCatalog() {
    static const ToolCatalog catalog{
        builtIn("tool.windowSwitcher", "Window+", "Scroll near edges to cycle windows",
                "square.and.pencil"),
        builtIn("tool.mediaControl", "Media+", "Edge click gestures for media keys",
                "slider.horizontal.3"),
        builtIn("tool.desktopSwitcher", "Desktop+", "Scroll near edges to switch desktops",
                "star.fill"),
        builtIn("tool.volumeControl", "Volume+", "Edge scroll controls system volume",
                "speaker.wave.2.fill"),
        builtIn("tool.trackpadMiddleClick", "Trackpad+", "3-finger press maps to middle click",
                "bolt.fill"),
        builtIn("tool.scrollReverse", "Scroll+",
                "Flip scroll direction for trackpad and mouse independently",
                "arrow.up.arrow.down"),
    };
    return catalog;
}

std::string encodeCatalog(const ToolCatalog& catalog) {
    auto document = nlohmann::ordered_json::array();
    for (const auto& item : catalog) {
        auto object = nlohmann::ordered_json::object();
        for (const auto& field : requiredFields) {
            object[field.key] = item.*field.value;
        }
        for (const auto& field : optionalFields) {
            if (const auto& value = item.*field.value) {
                object[field.key] = *value;
            }
        }
        document.push_back(std::move(object));
    }
    return document.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::optional<ToolCatalog> decodeCatalog(std::string_view document) {
    ToolCatalog catalog;
    const bool isIntact = readFlatObjects(document, [&](const FlatObject& object) {
        auto item = decodeItem(object);
        if (item) {
            catalog.push_back(std::move(*item));
        }
        return item.has_value();
    });
    return isIntact ? std::optional(std::move(catalog)) : std::nullopt;
}

} // namespace quillon
