#pragma once

#include "Platform/Linux/session/DesktopEntry.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillon {

/// What people call applications, found by what their windows say of themselves. Letter case never
/// counts in what is searched for.
class ApplicationNames {
  public:
    ApplicationNames() = default;

    /// `locales` are the endings of localised keys, the best first: see messageLocales().
    explicit ApplicationNames(std::vector<std::string> locales) : locales_(std::move(locales)) {}

    /// `id` is that of the entry: its path within its folder, with dashes for slashes, less the
    /// ending. Of two that are equally good the first one that was added counts, and of two with
    /// the same id only the first does.
    void add(std::string_view id, const DesktopEntry& entry);

    /// By the desktop entry that the application says is its own, the window class that an entry
    /// says it has, the entry's own name, or the program that it starts.
    [[nodiscard]] std::optional<std::string> find(std::string_view applicationId,
                                                  std::string_view instance,
                                                  std::string_view className) const;

  private:
    struct Named {
        std::string name;
        int rank; // the higher the better
    };
    using Names = std::unordered_map<std::string, Named>;

    static void keep(Names& names, std::string_view key, const std::string& name, int rank);
    [[nodiscard]] std::optional<std::string> localizedName(const DesktopEntry& entry) const;

    std::vector<std::string> locales_;
    Names byId_;
    Names byClass_;
    Names byProgram_;
    std::unordered_map<std::string, bool> seen_;
};

/// The endings of localised keys that the locale of this environment asks for, the best first.
[[nodiscard]] std::vector<std::string> messageLocales();

/// The same for the name of a locale, such as "de_AT.UTF-8@euro".
[[nodiscard]] std::vector<std::string> localesOf(std::string_view locale);

} // namespace quillon
