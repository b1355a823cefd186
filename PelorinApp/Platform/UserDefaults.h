#pragma once

#include "Platform/Diagnostics.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillon {

/// A stored object that no setting has the type of; `description` is how the store writes it.
struct UnsupportedObject {
    std::string description;
    bool operator==(const UnsupportedObject&) const = default;
};

using StringList = std::vector<std::string>;
using DefaultsObject = std::variant<bool, double, std::string, StringList, UnsupportedObject>;

/// One store of settings: typed objects by key. Main thread only.
///
/// Reading never fails: what cannot be read is absent. Writing takes effect at once for readers of
/// this object and reaches the disk soon after; the writer neither waits for it nor learns of a
/// failure, which is reported as a line of diagnostics.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// The stored object, or nothing. A stored false or 0 is an object.
    [[nodiscard]] virtual std::optional<DefaultsObject> object(std::string_view key) const = 0;

    virtual void set(std::string_view key, DefaultsObject object) = 0;
    virtual void remove(std::string_view key) = 0;
};

class UserDefaultsStores {
  public:
    virtual ~UserDefaultsStores() = default;

    [[nodiscard]] virtual UserDefaults& standard() = 0;

    /// A named store of its own, shared between programs; null when it cannot be opened.
    [[nodiscard]] virtual UserDefaults* suite(std::string_view name) = 0;
};

/// A number that a setting can hold: finite, and of a magnitude that fits a 64-bit integer, since
/// settings are rounded to whole steps.
[[nodiscard]] bool isStorableNumber(double value);

/// The object under `key` when it has the type that is asked for, else the fallback or nothing. An
/// object of another type, or a number that is not storable, is reported as a line of diagnostics.
[[nodiscard]] bool boolForKey(const UserDefaults& defaults, std::string_view key, bool fallback,
                              Diagnostics& diagnostics);
[[nodiscard]] double doubleForKey(const UserDefaults& defaults, std::string_view key,
                                  double fallback, Diagnostics& diagnostics);
[[nodiscard]] std::optional<double> storedDouble(const UserDefaults& defaults, std::string_view key,
                                                 Diagnostics& diagnostics);
[[nodiscard]] StringList stringsForKey(const UserDefaults& defaults, std::string_view key,
                                       Diagnostics& diagnostics);

} // namespace quillon
