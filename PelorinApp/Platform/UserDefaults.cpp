#include "Platform/UserDefaults.h"

#include <cmath>
#include <type_traits>
#include <utility>

namespace quillon {

namespace {

std::string describe(const DefaultsObject& object) {
    return std::visit(
        [](const auto& value) -> std::string {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, bool>) {
                return value ? "true" : "false";
            } else if constexpr (std::is_same_v<T, double>) {
                return isStorableNumber(value) ? "a number" : "a number out of range";
            } else if constexpr (std::is_same_v<T, std::string>) {
                return "a text";
            } else if constexpr (std::is_same_v<T, StringList>) {
                return "a list";
            } else {
                return value.description;
            }
        },
        object);
}

void reportWrongType(std::string_view key, const DefaultsObject& object, std::string_view wanted,
                     Diagnostics& diagnostics) {
    std::string text = "⚠️ Setting ";
    text += key;
    text += " should be ";
    text += wanted;
    text += " but is ";
    text += describe(object);
    text += "; using the default";
    diagnostics.line(text);
}

} // namespace

bool isStorableNumber(double value) { return std::isfinite(value) && std::fabs(value) < 0x1p63; }

bool boolForKey(const UserDefaults& defaults, std::string_view key, bool fallback,
                Diagnostics& diagnostics) {
    const auto object = defaults.object(key);
    if (!object) {
        return fallback;
    }
    if (const bool* value = std::get_if<bool>(&*object)) {
        return *value;
    }
    reportWrongType(key, *object, "true or false", diagnostics);
    return fallback;
}

double doubleForKey(const UserDefaults& defaults, std::string_view key, double fallback,
                    Diagnostics& diagnostics) {
    return storedDouble(defaults, key, diagnostics).value_or(fallback);
}

std::optional<double> storedDouble(const UserDefaults& defaults, std::string_view key,
                                   Diagnostics& diagnostics) {
    const auto object = defaults.object(key);
    if (!object) {
        return std::nullopt;
    }
    if (const double* value = std::get_if<double>(&*object); value && isStorableNumber(*value)) {
        return *value;
    }
    reportWrongType(key, *object, "a number", diagnostics);
    return std::nullopt;
}

StringList stringsForKey(const UserDefaults& defaults, std::string_view key,
                         Diagnostics& diagnostics) {
    auto object = defaults.object(key);
    if (!object) {
        return {};
    }
    if (auto* value = std::get_if<StringList>(&*object)) {
        return std::move(*value);
    }
    reportWrongType(key, *object, "a list of texts", diagnostics);
    return {};
}

} // namespace quillon
