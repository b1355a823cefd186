#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillon {

/// A value that no field of ours can have: a number, an array, an object.
struct OtherJson {};

using FlatValue = std::variant<std::nullptr_t, bool, std::string, OtherJson>;

/// A JSON object whose fields are plain values. Of several fields of one name the last counts.
class FlatObject {
  public:
    void add(std::string name, FlatValue value) {
        fields_.emplace_back(std::move(name), std::move(value));
    }

    /// Null when there is no such field.
    [[nodiscard]] const FlatValue* find(std::string_view name) const;

    /// Takes a field over into `target`, if it is there and of that type. Whether it was.
    template <class T>
    [[nodiscard]] bool take(std::string_view name, T& target) const {
        const FlatValue* value = find(name);
        const T* wanted = value == nullptr ? nullptr : std::get_if<T>(value);
        if (wanted == nullptr) {
            return false;
        }
        target = *wanted;
        return true;
    }

  private:
    std::vector<std::pair<std::string, FlatValue>> fields_;
};

/// Reads a document that is an array of objects, one object at a time, so that a huge or deeply
/// nested document takes little memory and time; `accept` answers whether to go on. True when the
/// whole document is such an array and every object was accepted.
[[nodiscard]] bool readFlatObjects(std::string_view document,
                                   const std::function<bool(const FlatObject&)>& accept);

} // namespace quillon
