#include "Platform/Linux/session/DefaultsDocument.h"

#include "Platform/Linux/session/DefaultsReader.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <optional>
#include <type_traits>
#include <utility>

namespace quillon {

namespace {

using nlohmann::json;

std::optional<std::string> encode(const json& value) {
    try {
        return value.dump();
    } catch (const json::type_error&) { // a text that is not UTF-8
        return std::nullopt;
    }
}

std::optional<std::string> encode(const DefaultsObject& object) {
    return std::visit(
        [](const auto& value) -> std::optional<std::string> {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, UnsupportedObject>) {
                return std::nullopt;
            } else if constexpr (std::is_same_v<T, double>) {
                return std::isfinite(value) ? encode(json(value)) : std::nullopt;
            } else {
                return encode(json(value));
            }
        },
        object);
}

} // namespace

std::variant<DefaultsDocument, DefaultsDamage> DefaultsDocument::parse(std::string_view text) {
    DefaultsDocument document;
    if (auto damage = readDefaults(text, document.values_)) {
        return *std::move(damage);
    }
    return document;
}

std::string DefaultsDocument::serialise() const {
    std::string text = "{";
    const char* separator = "\n  ";
    for (const auto& [key, value] : values_) {
        text += separator;
        text += json(key).dump();
        text += ": ";
        text += value.text;
        separator = ",\n  ";
    }
    text += values_.empty() ? "}\n" : "\n}\n";
    return text;
}

const DefaultsObject* DefaultsDocument::object(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? nullptr : &found->second.object;
}

DefaultsDocument::Change DefaultsDocument::set(std::string_view key, DefaultsObject object) {
    auto text = encode(object);
    if (!text || !encode(json(std::string(key)))) {
        return Change::refused;
    }
    const auto found = values_.find(key);
    if (found == values_.end()) {
        values_.emplace(std::string(key), Value{std::move(object), *std::move(text)});
        return Change::made;
    }
    if (found->second.object == object) {
        return Change::none;
    }
    found->second = {std::move(object), *std::move(text)};
    return Change::made;
}

DefaultsDocument::Change DefaultsDocument::remove(std::string_view key) {
    const auto found = values_.find(key);
    if (found == values_.end()) {
        return Change::none;
    }
    values_.erase(found);
    return Change::made;
}

} // namespace quillon
