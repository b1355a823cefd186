#pragma once

#include "Platform/UserDefaults.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace quillon {

/// Why a text is no document, as the rest of a sentence that starts with the file's name.
struct DefaultsDamage {
    std::string reason;
};

/// The content of a store of settings: one JSON object of typed values.
///
/// Each value keeps the text that it was read from. Writing the document again therefore alters
/// nothing but what was set: nested objects, integers beyond a double's precision and numbers too
/// large for a double stay as they are.
class DefaultsDocument {
  public:
    enum class Change { none, made, refused };

    [[nodiscard]] static std::variant<DefaultsDocument, DefaultsDamage>
    parse(std::string_view text);

    /// One key a line, sorted, so that the same settings always give the same text.
    [[nodiscard]] std::string serialise() const;

    /// Null when the key is absent. Valid until the document changes.
    [[nodiscard]] const DefaultsObject* object(std::string_view key) const;

    /// Refuses what JSON cannot hold: a number that is not finite, text that is not UTF-8, and
    /// objects of no supported type, whose description need not be their whole text.
    Change set(std::string_view key, DefaultsObject object);
    Change remove(std::string_view key);

    [[nodiscard]] bool empty() const { return values_.empty(); }

    bool operator==(const DefaultsDocument&) const = default;

    struct Value {
        DefaultsObject object;
        std::string text;
        bool operator==(const Value&) const = default;
    };
    using Values = std::map<std::string, Value, std::less<>>;

  private:
    Values values_;
};

} // namespace quillon
